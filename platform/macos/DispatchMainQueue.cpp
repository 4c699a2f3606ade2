#include "platform/macos/DispatchMainQueue.hpp"

#include "platform/macos/ApplicationEventLoop.hpp"

#include <dispatch/dispatch.h>

#include <algorithm>
#include <cstdint>

namespace corvane {

namespace {

/// What a queued item carries: the table it looks itself up in, and its token.
struct Ticket {
    std::weak_ptr<DispatchMainQueue::Table> table;
    Scheduler::Token token;
};

void runTicket(void* context) {
    std::unique_ptr<Ticket> ticket(static_cast<Ticket*>(context));
    auto table = ticket->table.lock();
    if (!table) return;
    std::function<void()> work;
    {
        std::lock_guard lock(table->mutex);
        auto found = table->pending.find(ticket->token);
        if (found == table->pending.end()) return; // cancelled
        work = std::move(found->second);
        table->pending.erase(found);
    }
    work();
}

} // namespace

DispatchMainQueue::DispatchMainQueue() : table_(std::make_shared<Table>()) {}

DispatchMainQueue::~DispatchMainQueue() {
    std::lock_guard lock(table_->mutex);
    table_->pending.clear();
}

Scheduler::Token DispatchMainQueue::schedule(double seconds, std::function<void()> work) {
    Token token;
    {
        std::lock_guard lock(table_->mutex);
        token = ++table_->last;
        table_->pending.emplace(token, std::move(work));
    }
    auto* ticket = new Ticket{table_, token};
    auto nanoseconds = static_cast<std::int64_t>(std::max(seconds, 0.0) * NSEC_PER_SEC);
    if (nanoseconds == 0) dispatch_async_f(dispatch_get_main_queue(), ticket, runTicket);
    else dispatch_after_f(dispatch_time(DISPATCH_TIME_NOW, nanoseconds), dispatch_get_main_queue(), ticket, runTicket);
    return token;
}

void DispatchMainQueue::cancel(Token token) {
    std::lock_guard lock(table_->mutex);
    table_->pending.erase(token);
}

void DispatchMainQueue::post(std::function<void()> work) { schedule(0, std::move(work)); }

void DispatchMainQueue::run() { ApplicationEventLoop::run(); }

void DispatchMainQueue::stop() {
    // Through the queue, so a stop asked for before the loop runs still ends it once it does.
    dispatch_async_f(dispatch_get_main_queue(), nullptr, [](void*) { ApplicationEventLoop::stop(); });
}

} // namespace corvane
