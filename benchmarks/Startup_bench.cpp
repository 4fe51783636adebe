#include "support/SampleModel.h"
#include "support/XmiSample.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

extern char ** environ;

namespace {

double seconds(timeval const & time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// Processor time of a whole process from start to end, including the work of the loader and of the operating system.
void runProcess(benchmark::State & state, std::string program, std::vector<std::string> arguments) {
    std::vector<char *> texts{program.data()};
    for (std::string & argument : arguments) {
        texts.push_back(argument.data());
    }
    texts.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (int const output : {STDOUT_FILENO, STDERR_FILENO}) {
        posix_spawn_file_actions_addopen(&actions, output, "/dev/null", O_WRONLY, 0);
    }
    for (auto _ : state) {
        pid_t process = 0;
        int status = 0;
        rusage usage = {};
        if (posix_spawn(&process, program.c_str(), &actions, nullptr, texts.data(), environ) != 0 ||
            wait4(process, &status, 0, &usage) != process || status != 0) {
            state.SkipWithError("the program did not run");
            break;
        }
        state.SetIterationTime(seconds(usage.ru_utime) + seconds(usage.ru_stime));
    }
    posix_spawn_file_actions_destroy(&actions);
}

/// The same for a program that reads a file of 100,000 objects and ends.
void runLoad(benchmark::State & state) {
    using ZEL::bench::SampleModel;
    constexpr std::int64_t objects = 100'000;
    runProcess(state, LOAD_PROGRAM, {ZEL::bench::XmiSample::shared(SampleModel::packagesFor(objects)).path()});
}

void forProcesses(benchmark::internal::Benchmark * benchmark) {
    benchmark->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(100);
}

BENCHMARK_CAPTURE(runProcess, library, LIBRARY_PROGRAM, {})->Apply(forProcesses);
BENCHMARK_CAPTURE(runProcess, empty, EMPTY_PROGRAM, {})->Apply(forProcesses);
BENCHMARK_CAPTURE(runProcess, version, COMMAND_PROGRAM, {"--version"})->Apply(forProcesses);
BENCHMARK(runLoad)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace
