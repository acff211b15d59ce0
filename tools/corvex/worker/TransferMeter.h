#pragma once

#include <deque>
#include <mutex>

#include <Corvex/filesystem/ApplicationIOTrackingDelegate.h>

namespace corvex::tool {

/// How fast the engines of this process read and write, from their reports of the last two seconds. Any thread.
class TransferMeter {
public:
    /// Bytes a second; 0 while there is less than one report to go by.
    struct Rates {
        double read = 0, written = 0;
    };

    void take(const IOActivityUpdate& update);
    [[nodiscard]] Rates rates() const;

private:
    struct Sample {
        IOActivityUpdate::Timestamp time;
        std::int64_t read = 0, written = 0;  ///< Since the sample before.
    };

    mutable std::mutex mutex_;
    std::deque<Sample> samples_;
};

}  // namespace corvex::tool
