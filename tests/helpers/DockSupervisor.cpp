// Keeps the stand-in Dock running the way launchd keeps the real one: whenever it exits, it is
// started again. Ends (and ends the Dock) on SIGTERM, when its own parent dies, or after a minute.
//
//   dock-supervisor DOCK [ARGUMENT...]

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace {

volatile std::sig_atomic_t stopping = 0;

void onStop(int) { stopping = 1; }

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: dock-supervisor DOCK [ARGUMENT...]\n");
        return 2;
    }
    struct sigaction action {};
    action.sa_handler = onStop;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGALRM, &action, nullptr);
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    alarm(60);

    for (int launches = 0; !stopping && launches < 200; ++launches) {
        pid_t dock = 0;
        if (posix_spawn(&dock, argv[1], nullptr, nullptr, argv + 1, environ) != 0) return 1;
        // Polled rather than blocking, so that a stop request arriving at any moment is seen.
        int status = 0;
        bool told = false;
        for (;;) {
            auto ended = ::waitpid(dock, &status, WNOHANG);
            if (ended == dock || (ended < 0 && errno != EINTR)) break;
            if (stopping && !told) {
                ::kill(dock, SIGTERM);
                told = true;
            }
            ::usleep(5000);
        }
    }
    return 0;
}
