#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include <Corvex/platform/ChronoCore.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/FunctionCore.h>
#include <Corvex/platform/Object.h>
#include <Corvex/platform/SerialQueue.h>

namespace corvex::inline v0 {

/// What an engine has read and written of one file since its last report. Immutable; references that it hands out are
/// valid as long as it.
class CORVEX_EXPORT IOActivityUpdate {
public:
    using Timestamp = std::chrono::system_clock::time_point;

    virtual ~IOActivityUpdate();
    /// The tracking identifier of the engine that did the work; none where it has none, so that its work cannot be told
    /// from that of others.
    [[nodiscard]] virtual const std::optional<std::string>& activityPerformerIdentifier() const noexcept = 0;
    [[nodiscard]] virtual const std::filesystem::path& url() const noexcept = 0;  ///< The file.
    /// Since the report before, not in all: reports add up.
    [[nodiscard]] virtual std::int64_t bytesRead() const noexcept = 0;
    [[nodiscard]] virtual std::int64_t bytesWritten() const noexcept = 0;  ///< Since the report before.
    /// When the engine counted, by its clock; reports of several engines may arrive out of this order.
    [[nodiscard]] virtual Timestamp timestamp() const noexcept = 0;
};

/// An update as a value; copies are independent.
class CORVEX_EXPORT URLActivityUpdate final : public IOActivityUpdate {
public:
    /// Bytes since the last update, and when they were counted.
    URLActivityUpdate(std::optional<std::string> activityPerformerIdentifier, std::filesystem::path url,
                      std::int64_t bytesRead, std::int64_t bytesWritten, Timestamp timestamp);

    [[nodiscard]] const std::optional<std::string>& activityPerformerIdentifier() const noexcept override {
        return activityPerformerIdentifier_;
    }
    [[nodiscard]] const std::filesystem::path& url() const noexcept override { return url_; }
    [[nodiscard]] std::int64_t bytesRead() const noexcept override { return bytesRead_; }
    [[nodiscard]] std::int64_t bytesWritten() const noexcept override { return bytesWritten_; }
    [[nodiscard]] Timestamp timestamp() const noexcept override { return timestamp_; }

private:
    std::optional<std::string> activityPerformerIdentifier_;
    std::filesystem::path url_;
    std::int64_t bytesRead_, bytesWritten_;
    Timestamp timestamp_;
};

/// Takes the reports of engines: what an engine is given, so that it need not know who counts. Implementations take
/// calls from any thread and return soon, as the callers are in the middle of copying.
class CORVEX_EXPORT AggregateIOTrackingDelegate {
public:
    virtual ~AggregateIOTrackingDelegate();
    /// Bytes of the file `from` since the last report, at `timestamp`, by the engine `trackingID`.
    virtual void handleSpeedUpdate(const std::filesystem::path& from, std::int64_t bytesRead, std::int64_t bytesWritten,
                                   IOActivityUpdate::Timestamp timestamp,
                                   const std::optional<std::string>& trackingID) = 0;
};

/// The one place of a process to which its engines report what they read and write. It hands each report to the
/// behaviour that the application has installed, in the order in which they were made, on its own queue and never on
/// the caller's thread; reports made before that are dropped. Calls return at once. Any thread.
/// Destruction waits for the reports made so far, and must not happen on the queue itself.
class CORVEX_EXPORT ApplicationIOTrackingDelegate final : public Object, public AggregateIOTrackingDelegate {
public:
    using Behavior = std::function<void(const IOActivityUpdate& update)>;

    ApplicationIOTrackingDelegate();
    ~ApplicationIOTrackingDelegate() override;
    ApplicationIOTrackingDelegate(const ApplicationIOTrackingDelegate&) = delete;
    ApplicationIOTrackingDelegate& operator=(const ApplicationIOTrackingDelegate&) = delete;

    /// The one that applications use. sharedInstance() is its name for language bindings.
    [[nodiscard]] static ApplicationIOTrackingDelegate& shared();
    [[nodiscard]] static ApplicationIOTrackingDelegate& sharedInstance() { return shared(); }

    /// Only the first behaviour counts; a later one is discarded with a log line (level debug). An empty one counts as
    /// none. What it throws stops the process.
    void setupIOTrackingBehavior(Behavior updateBehavior);

    void handleSpeedUpdate(const std::filesystem::path& from, std::int64_t bytesRead, std::int64_t bytesWritten,
                           IOActivityUpdate::Timestamp timestamp,
                           const std::optional<std::string>& trackingID) override;

    /// Where the behaviour runs: what is added here runs behind the reports made so far.
    [[nodiscard]] SerialQueue& trackedHistoryAccessQueue() noexcept { return trackedHistoryAccessQueue_; }

    [[nodiscard]] std::string description() const override { return "ApplicationIOTrackingDelegate"; }
    /// By identity.
    [[nodiscard]] bool isEqual(const Object& other) const override { return this == &other; }
    [[nodiscard]] std::size_t hash() const override { return std::hash<const void*>{}(this); }

private:
    Behavior ioTrackingBehavior_;            ///< Touched by the work of the queue alone.
    SerialQueue trackedHistoryAccessQueue_;  ///< Last, so that its work ends before the rest.
};

}  // namespace corvex::inline v0
