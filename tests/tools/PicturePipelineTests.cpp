#include <tools/corvex/worker/PicturePipeline.h>

#include <array>
#include <atomic>
#include <latch>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <tests/Thrown.h>

namespace corvex::tool::picturePipelineTests {
namespace {

void push(PicturePipeline& pipeline, std::int64_t number) {
    const FramePointer picture = makeFrame();
    picture->pts = number;
    pipeline.push(*picture);
}

/// The first picture is done only when the others are, which takes as many threads; they come out in order all the same.
TEST(PicturePipeline, worksAtOnceAndKeepsTheOrder) {
    std::array<std::latch, 3> later{std::latch(2), std::latch(1), std::latch(0)};
    const PicturePipeline::Work work = [&](AVFrame& picture, std::uint64_t) {
        const auto number = static_cast<std::size_t>(picture.pts);
        later[number].wait();
        for (std::size_t earlier = 0; earlier < number; ++earlier) later[earlier].count_down();
    };
    PicturePipeline pipeline({work, work, work}, 3);
    for (std::int64_t i = 0; i < 3; ++i) {
        EXPECT_FALSE(pipeline.isFull());
        push(pipeline, i);
    }
    EXPECT_TRUE(pipeline.isFull());
    for (std::int64_t i = 0; i < 3; ++i) EXPECT_EQ(pipeline.take()->pts, i);
    EXPECT_TRUE(pipeline.isEmpty());
}

TEST(PicturePipeline, anErrorComesInItsTurnAndTheRestIsDropped) {
    std::latch second(1);
    const PicturePipeline::Work work = [&](AVFrame& picture, std::uint64_t) {
        if (picture.pts == 0) second.wait();
        if (picture.pts != 1) return;
        second.count_down();
        throw JobError("picture 1 is bad");
    };
    PicturePipeline pipeline({work, work}, 8);
    for (std::int64_t i = 0; i < 8; ++i) push(pipeline, i);
    EXPECT_EQ(pipeline.take()->pts, 0);
    const auto error = corvex::test::thrownBy<JobError>([&] { return pipeline.take(); });
    EXPECT_STREQ(error.value().what(), "picture 1 is bad");
}

/// A work is never used by two threads at once, and what waits when the pipeline goes is not worked on.
TEST(PicturePipeline, stress) {
    for (const std::size_t capacity : {1U, 2U, 9U}) {
        std::atomic<int> worked{0};
        std::vector<PicturePipeline::Work> works;
        for (unsigned i = 0; i < 4; ++i) {
            works.emplace_back([&worked, random = std::make_shared<std::mt19937>(i)](AVFrame& picture, std::uint64_t) {
                for (auto rounds = (*random)() % 200; rounds > 0; --rounds) std::this_thread::yield();
                picture.width = static_cast<int>(picture.pts);
                ++worked;
            });
        }
        {
            PicturePipeline pipeline(std::move(works), capacity);
            std::int64_t taken = 0;
            for (std::int64_t i = 0; i < 100; ++i) {
                if (pipeline.isFull()) {
                    EXPECT_EQ(pipeline.take()->width, taken++);
                }
                push(pipeline, i);
            }
        }
        EXPECT_LE(worked, 100);
        EXPECT_GE(worked, 100 - static_cast<int>(capacity));
    }
}

}  // namespace
}  // namespace corvex::tool::picturePipelineTests
