#include <tools/corvex/worker/PicturePipeline.h>

#include <algorithm>
#include <optional>
#include <utility>

#include <Corvex/platform/TaskHandle.h>

namespace corvex::tool {
namespace {

template <class Work>
std::vector<std::shared_ptr<const Work>> shared(std::vector<Work> works) {
    std::vector<std::shared_ptr<const Work>> result;
    result.reserve(works.size());
    for (Work& work : works) result.push_back(std::make_shared<const Work>(std::move(work)));
    return result;
}

}  // namespace

PicturePipeline::PicturePipeline(std::vector<Work> works, std::size_t capacity)
    : capacity_(std::max<std::size_t>(capacity, 1)),
      works_(shared(std::move(works))),
      sequencer_(0, [](const std::uint64_t& number) { return std::optional(number + 1); }),
      threads_(static_cast<unsigned>(works_.capacity())) {}

PicturePipeline::~PicturePipeline() {
    isStopping_ = true;
    threads_.join();  // what waits for its turn ends without work, and the sequencer frees what came out
}

void PicturePipeline::push(AVFrame& picture) {
    FramePointer own = makeFrame();
    av_frame_move_ref(own.get(), &picture);
    spawn(process(pushedCount_++, std::move(own)), threads_);
}

FramePointer PicturePipeline::take() {
    ++takenCount_;
    Outcome outcome = std::move(*spawn(next(sequencer_), order_).waitSync()).value();
    if (outcome.error) std::rethrow_exception(outcome.error);
    return std::move(outcome.picture);
}

Task<> PicturePipeline::process(std::uint64_t number, FramePointer picture) {
    Outcome outcome(std::move(picture));
    std::shared_ptr<const Work> work = co_await works_.checkOut();
    try {
        if (!isStopping_) (*work)(*outcome.picture, number);
    } catch (...) {
        outcome.error = std::current_exception();
    }
    works_.checkIn(std::move(work));
    co_await sequencer_.add(std::move(outcome), number);
}

Task<PicturePipeline::Outcome> PicturePipeline::next(Sequencer sequencer) {
    auto entry = co_await sequencer.next();
    co_return std::move(entry->item);
}

}  // namespace corvex::tool
