#include <tools/corvex/host/TranscodeQueue.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <optional>
#include <set>
#include <thread>
#include <utility>

#include <unistd.h>

#include <Corvex/cli/CLICustodialFlag.h>
#include <Corvex/settings/TranscodeSettings.h>
#include <tools/corvex/host/ProgressDisplay.h>
#include <tools/corvex/host/WorkerProcess.h>
#include <tools/corvex/worker/OutputFile.h>

namespace corvex::tool {
namespace {

/// The tool's own number among the applications that start workers.
constexpr int toolAppNumber = 0;

std::vector<std::string> workerWords(const TranscodeCliArguments& arguments) {
    std::vector<std::string> words{std::string(TranscodeCliArguments::runInTranscodeModeFlag)};
    for (std::string& word : arguments.commandLineArguments()) words.push_back(std::move(word));
    words.emplace_back(cliFlag(CLICustodialFlag::parentPid));
    words.push_back(std::to_string(getpid()));
    words.emplace_back(cliFlag(CLICustodialFlag::parentAppNumber));
    words.push_back(std::to_string(toolAppNumber));
    return words;
}

bool isFolder(const std::string& output) {
    std::error_code error;  // of what does not exist
    return output.ends_with('/') ||
           (std::filesystem::is_directory(output, error) && !std::filesystem::path(output).has_extension());
}

std::string extensionOf(const TranscodeCliArguments& arguments) {
    const auto format = arguments.outputFileFormat().value_or(OAVQuickTimeFileFormat);
    const auto extension = format.preferredExtension();
    if (!extension) throw UsageError("-file_format " + inQuotes(format.rawValue()) + ": expected qt, mp4 or wav");
    return "." + std::string(rawValue(*extension));
}

/// No transcode may write onto what another one reads. Each worker looks at its own sources.
void requireSourcesKept(const std::vector<QueuedJob>& jobs, const TranscodeCliArguments& arguments) {
    arguments.enumerateInputFileGroups([&](std::span<const std::string> paths, std::int64_t) {
        for (const QueuedJob& job : jobs) {
            const std::string output(job.arguments.outputFile().value_or(""));
            const bool isSource = std::any_of(paths.begin(), paths.end(), [&](const std::string& path) {
                std::error_code error;  // of what does not exist
                return std::filesystem::equivalent(path, output, error);
            });
            if (isSource) throw JobError("-out '" + output + "' is also an input; a source is never replaced");
        }
    });
}

ExitStatus worse(ExitStatus a, ExitStatus b) { return std::max(a, b); }

std::size_t runnableAtOnce(std::int64_t count) {
    return static_cast<std::size_t>(std::clamp<std::int64_t>(count, 1, std::int64_t{WorkerProcess::mostAtOnce}));
}

TranscodePreferences preferencesIn(const UserDefaults& store) {
    const TranscodeSettings settings(store);
    TranscodePreferences preferences;
    preferences.mostAtOnce = runnableAtOnce(settings.explicitNumberOfConcurrentTranscodes());
    if (settings.permitAutoReattemptOfFailedTranscodes()) {
        constexpr std::int64_t mostReattempts = 1000;
        const auto reattempts = settings.numberOfReattemptsPerFailedTranscode();
        preferences.attempts += static_cast<std::size_t>(std::clamp<std::int64_t>(reattempts, 0, mostReattempts));
    }
    preferences.usesGpu = settings.useTranscodeGPUAcceleration();
    preferences.usesLegacyPipeline = settings.useLegacyTranscodePipeline();
    return preferences;
}

}  // namespace

TranscodePreferences TranscodePreferences::ofUser() {
    const TranscodePreferences defaults{.mostAtOnce = runnableAtOnce(std::thread::hardware_concurrency())};
    std::optional<UserDefaults> store;
    try {
        store = UserDefaults::standard();
    } catch (const UserDefaultsError&) {  // no home: a service, a container
        return defaults;
    }
    try {
        return preferencesIn(*store);
    } catch (const UserDefaultsError& error) {  // none of them changes what is written
        printError(error.what() + std::string("; the defaults count instead"));
        return defaults;
    }
}

std::vector<QueuedJob> jobsOf(const TranscodeCliArguments& arguments) {
    std::vector<QueuedJob> jobs;
    const std::string folder(arguments.outputFile().value_or(""));
    if (!isFolder(folder)) {
        jobs.push_back({arguments, ""});
        return jobs;
    }
    const std::string extension = extensionOf(arguments);
    std::set<std::string> names;
    arguments.enumerateInputFileGroups([&](std::span<const std::string> paths, std::int64_t) {
        const std::string name = std::filesystem::path(paths.front()).stem().string() + extension;
        if (!names.insert(name).second) {
            throw UsageError("-out " + inQuotes(folder) + ": two inputs would become " + inQuotes(name));
        }
        QueuedJob job{arguments, name};
        job.arguments.setInputFiles(std::vector<std::string>(paths.begin(), paths.end()));
        job.arguments.setOutputFile((std::filesystem::path(folder) / name).string());
        jobs.push_back(std::move(job));
    });
    if (jobs.size() > 1 && arguments.progressFile()) {
        throw UsageError("-progress_file: several transcodes cannot share one; remove the flag");
    }
    requireSourcesKept(jobs, arguments);
    if (jobs.size() == 1) jobs.front().label.clear();
    return jobs;
}

ExitStatus TranscodeQueue::run() {
    if (jobs_.size() == 1) return runJob(jobs_.front());
    std::mutex mutex;
    std::size_t next = 0, done = 0;
    ExitStatus status = ExitStatus::success;
    const auto work = [&] {
        std::unique_lock lock(mutex);
        while (next < jobs_.size() && status != ExitStatus::usage && !WorkerProcess::stopWasRequested()) {
            const QueuedJob& job = jobs_[next++];
            lock.unlock();
            const ExitStatus ended = runJob(job);
            lock.lock();
            if (ended == ExitStatus::success) ++done;
            status = worse(status, ended);
        }
    };
    {
        std::vector<std::jthread> threads;
        const std::size_t count = std::min(preferences_.mostAtOnce, jobs_.size());
        for (std::size_t i = 0; i < count; ++i) threads.emplace_back(work);
    }
    std::printf("%zu of %zu transcodes done\n", done, jobs_.size());
    if (done < jobs_.size()) status = worse(status, ExitStatus::jobFailed);
    return status;
}

ExitStatus TranscodeQueue::runJob(const QueuedJob& job) const {
    const std::string prefix = job.label.empty() ? "" : job.label + ": ";
    for (std::size_t attempt = 1;; ++attempt) {
        ExitStatus status = ExitStatus::jobFailed;
        try {
            status = runWorker(job);
        } catch (const std::exception& error) {  // of the system, too: other transcodes go on
            printError(prefix + error.what());
        }
        const bool isLast = attempt >= preferences_.attempts || WorkerProcess::stopWasRequested();
        if (status != ExitStatus::jobFailed || isLast) return status;
        printError(prefix + "failed; attempt " + std::to_string(attempt + 1) + " of " +
                   std::to_string(preferences_.attempts));
    }
}

ExitStatus TranscodeQueue::runWorker(const QueuedJob& job) const {
    const std::string prefix = job.label.empty() ? "" : job.label + ": ";
    ProgressDisplay display(std::string(job.arguments.progressOutputPrefix().value_or("")), job.label);
    WorkerProcess worker(workerWords(job.arguments));
    const pid_t process = worker.processIdentifier();
    const WorkerEnd end =
        worker.wait([&](std::string_view line) { display.takeLine(line); },
                    [&](std::string_view line) {
                        display.clear();
                        std::fprintf(stderr, "%s%.*s\n", prefix.c_str(), static_cast<int>(line.size()), line.data());
                    });
    display.clear();
    if (end.signal != 0) {
        const std::string output(job.arguments.outputFile().value_or(""));
        OutputFile::removeLeftovers(output, job.arguments.workDirectory().value_or(""), process);
        throw JobError("the worker was ended by signal " + std::to_string(end.signal) + " (" + strsignal(end.signal) +
                       "); " + inQuotes(output) + " was not written");
    }
    return static_cast<ExitStatus>(end.exitStatus);
}

}  // namespace corvex::tool
