#pragma once

#include <boost/asio/awaitable.hpp>

namespace quillo {

/// A coroutine that yields a `T` or throws, begun when it is awaited. It runs on the queue of the coroutine that awaits
/// it, and is cancelled with it: from then on whatever it waits for throws OperationCancelled.
///
/// A coroutine is a named function that takes its arguments by value; what a `co_await` needs (a lambda, an aggregate,
/// another task) is named before it.
template <class T = void>
using Task = boost::asio::awaitable<T>;

}  // namespace quillo
