#include "QuilloCore/Concurrency/Suspension.h"

#include <boost/asio/associated_cancellation_slot.hpp>
#include <boost/asio/associated_executor.hpp>
#include <boost/asio/async_result.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/this_coro.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <utility>

#include "QuilloCore/Concurrency/OperationCancelled.h"

namespace quillo {

namespace asio = boost::asio;

Task<> suspendUntilResumed(std::move_only_function<void(Job resume)> install, std::function<void()> onCancel) {
  asio::cancellation_state state = co_await asio::this_coro::cancellation_state;
  if (state.cancelled() != asio::cancellation_type::none) onCancel();
  auto initiate = [&](auto handler) {
    auto slot = asio::get_associated_cancellation_slot(handler);
    if (slot.is_connected()) slot.assign([onCancel](asio::cancellation_type /*unused*/) { onCancel(); });
    const auto executor = asio::get_associated_executor(handler);
    install([executor, handler = std::move(handler)]() mutable { asio::post(executor, std::move(handler)); });
  };
  auto suspension = asio::async_initiate<const asio::use_awaitable_t<>, void()>(initiate, asio::use_awaitable);
  co_await std::move(suspension);
  // Later cancellations are no longer this suspension's.
  if (state.slot().is_connected()) state.slot().clear();
}

Task<> checkCancellation() {
  const asio::cancellation_state state = co_await asio::this_coro::cancellation_state;
  if (state.cancelled() != asio::cancellation_type::none) throw OperationCancelled();
}

}  // namespace quillo
