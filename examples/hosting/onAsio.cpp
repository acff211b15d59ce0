// A host that lives on Asio: the library's tasks run on its io_context, beside its own handlers.
#include <cstdio>

#include <Corvex/platform/adapters/AsioExecutor.h>
#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>

#include <Corvex/concurrency/TaskFactory.h>
#include <Corvex/platform/TaskHandle.h>

namespace {

corvex::Task<int> readBlock(int number) {
    co_await corvex::sleepFor(std::chrono::milliseconds(1));
    co_return number * 512;
}

corvex::Task<int> readAll() {
    int bytes = 0;
    for (int block = 1; block <= 3; ++block) {
        auto operation = [block] { return readBlock(block); };
        bytes += co_await corvex::TaskFactory::withTimeout(30, std::nullopt, operation);
    }
    co_return bytes;
}

}  // namespace

int main() {
    asio::io_context context;
    auto guard = asio::make_work_guard(context);  // sleeping tasks are no work in Asio's eyes
    corvex::AsioExecutor executor(context.get_executor());

    auto work = [](asio::executor_work_guard<asio::io_context::executor_type>& running) -> corvex::Task<int> {
        const int bytes = co_await readAll();
        running.reset();
        co_return bytes;
    };
    const auto handle = corvex::spawn(work(guard), executor);
    context.run();
    const int bytes = handle.waitSync()->value();
    std::printf("%d bytes\n", bytes);
    return bytes == 3072 ? 0 : 1;
}
