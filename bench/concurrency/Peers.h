#pragma once

// What the benchmarks need of the peers, where these are installed.
#if __has_include(<asio.hpp>)
#ifndef ASIO_STANDALONE
#define ASIO_STANDALONE 1
#endif
#define CORVEX_BENCH_ASIO 1
#include <asio/co_spawn.hpp>
#include <asio/detached.hpp>
#include <asio/experimental/awaitable_operators.hpp>
#include <asio/experimental/channel.hpp>
#include <asio/experimental/concurrent_channel.hpp>
#include <asio/io_context.hpp>
#include <asio/post.hpp>
#include <asio/steady_timer.hpp>
#include <asio/thread_pool.hpp>
#include <asio/use_awaitable.hpp>
#endif
#if __has_include(<oneapi/tbb/task_group.h>)
#define CORVEX_BENCH_TBB 1
#include <oneapi/tbb/concurrent_queue.h>
#include <oneapi/tbb/task_arena.h>
#include <oneapi/tbb/task_group.h>
#endif
