#include "CorvaneWidgetsUI/usage/WorkerThread.hpp"

#include <system_error>
#include <thread>
#include <vector>

#ifdef __linux__
#include <pthread.h>
#include <sched.h>
#endif

namespace corvane {

#ifdef __linux__

struct WorkerThread::State {
    std::function<void()> body;
    cpu_set_t allowed;
    pthread_t thread;

    static void* run(void* context) {
        auto& state = *static_cast<State*>(context);
        // Placed; from here on the scheduler may move it anywhere the process may run.
        ::sched_setaffinity(0, sizeof state.allowed, &state.allowed);
        state.body();
        return nullptr;
    }
};

WorkerThread::WorkerThread(std::function<void()> body, std::size_t index) : state_(std::make_unique<State>()) {
    state_->body = std::move(body);
    CPU_ZERO(&state_->allowed);
    pthread_attr_t attributes;
    if (::pthread_attr_init(&attributes) != 0) throw std::system_error(ENOMEM, std::generic_category());
    std::vector<int> others;
    if (::sched_getaffinity(0, sizeof state_->allowed, &state_->allowed) == 0) {
        const int current = ::sched_getcpu();
        for (int processor = 0; processor < CPU_SETSIZE; ++processor)
            if (CPU_ISSET(processor, &state_->allowed) && processor != current) others.push_back(processor);
    }
    if (!others.empty()) {
        cpu_set_t start;
        CPU_ZERO(&start);
        CPU_SET(others[index % others.size()], &start);
        ::pthread_attr_setaffinity_np(&attributes, sizeof start, &start);
    }
    const int error = ::pthread_create(&state_->thread, &attributes, &State::run, state_.get());
    ::pthread_attr_destroy(&attributes);
    if (error != 0) throw std::system_error(error, std::generic_category());
}

WorkerThread::~WorkerThread() { ::pthread_join(state_->thread, nullptr); }

#else

struct WorkerThread::State {
    std::thread thread;
};

WorkerThread::WorkerThread(std::function<void()> body, std::size_t) : state_(std::make_unique<State>()) {
    state_->thread = std::thread(std::move(body));
}

WorkerThread::~WorkerThread() { state_->thread.join(); }

#endif

} // namespace corvane
