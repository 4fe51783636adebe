#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

extern char ** environ;

namespace {

double seconds(timeval const & time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// Processor time of a whole process from start to end, including the work of the loader and of the operating system.
void runProcess(benchmark::State & state, char const * program) {
    for (auto _ : state) {
        char * const arguments[] = {const_cast<char *>(program), nullptr};
        pid_t process = 0;
        int status = 0;
        rusage usage = {};
        if (posix_spawn(&process, program, nullptr, nullptr, arguments, environ) != 0 ||
            wait4(process, &status, 0, &usage) != process || status != 0) {
            state.SkipWithError("the program did not run");
            return;
        }
        state.SetIterationTime(seconds(usage.ru_utime) + seconds(usage.ru_stime));
    }
}

BENCHMARK_CAPTURE(runProcess, library, LIBRARY_PROGRAM)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(100);
BENCHMARK_CAPTURE(runProcess, empty, EMPTY_PROGRAM)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(100);

} // namespace
