#include <tools/corvex/worker/TransferMeter.h>

#include <chrono>

namespace corvex::tool {

void TransferMeter::take(const IOActivityUpdate& update) {
    constexpr auto window = std::chrono::seconds(2);
    const std::lock_guard lock(mutex_);
    samples_.push_back({update.timestamp(), update.bytesRead(), update.bytesWritten()});
    while (samples_.size() > 2 && update.timestamp() - samples_.front().time > window) samples_.pop_front();
}

TransferMeter::Rates TransferMeter::rates() const {
    const std::lock_guard lock(mutex_);
    if (samples_.size() < 2) return {};
    const std::chrono::duration<double> span = samples_.back().time - samples_.front().time;
    if (span.count() <= 0) return {};
    Rates rates;
    for (const Sample& sample : samples_) {
        if (sample.time == samples_.front().time) continue;  // what it tells of lies before the span
        rates.read += static_cast<double>(sample.read);
        rates.written += static_cast<double>(sample.written);
    }
    return {rates.read / span.count(), rates.written / span.count()};
}

}  // namespace corvex::tool
