#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/platform/Version.h>

#include <iostream>
#include <string>
#include <vector>

/// Reads its arguments as a transcode job and prints the words that a worker process would be started with, one a line.
int main(int count, char** words) {
    const std::vector<std::string> arguments(words + 1, words + count);
    const corvex::TranscodeCliArguments job(arguments);

    std::cout << "Corvex " << corvex::versionString << '\n';
    for (const auto& word : job.commandLineArguments()) std::cout << word << '\n';
    return job.allFlagsAreValid() ? 0 : 1;
}
