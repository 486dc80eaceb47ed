// Cold start of the app: from process launch to the first frame of the first screen, and the
// process's peak memory. Runs the real executable offscreen ten times and prints the median.
//
//   bench_coldstart [path/to/vantrel-pro] [runs]

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

long long monotonicNs()
{
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return ts.tv_sec * 1000000000LL + ts.tv_nsec;
}

struct Run {
    double firstFrameMs = -1;
    double peakMb = -1;
};

Run launchOnce(const std::string &app, const std::string &dataDir)
{
    int pipeFd[2];
    if (pipe(pipeFd) != 0)
        return {};
    const long long start = monotonicNs();
    const pid_t pid = fork();
    if (pid == 0) {
        dup2(pipeFd[1], STDOUT_FILENO);
        close(pipeFd[0]);
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        setenv("QT_LOGGING_RULES", "*.info=false", 1);
        execl(app.c_str(), app.c_str(), "--report-first-frame", "--data-dir", dataDir.c_str(),
              static_cast<char *>(nullptr));
        _exit(127);
    }
    close(pipeFd[1]);
    std::string out;
    char buf[512];
    ssize_t n;
    while ((n = read(pipeFd[0], buf, sizeof buf)) > 0)
        out.append(buf, static_cast<size_t>(n));
    close(pipeFd[0]);
    int status = 0;
    rusage usage{};
    wait4(pid, &status, 0, &usage);

    Run run;
    const auto at = out.find("first-frame-monotonic-ns ");
    if (at != std::string::npos) {
        const long long frame = std::atoll(out.c_str() + at + std::strlen("first-frame-monotonic-ns "));
        run.firstFrameMs = static_cast<double>(frame - start) / 1e6;
    }
    run.peakMb = static_cast<double>(usage.ru_maxrss) / 1024.0;
    return run;
}

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v.empty() ? -1 : (v.size() % 2 ? v[v.size() / 2] : (v[v.size() / 2 - 1] + v[v.size() / 2]) / 2);
}

} // namespace

int main(int argc, char **argv)
{
    const std::string app = argc > 1 ? argv[1] : VANTREL_APP_PATH;
    const int runs = argc > 2 ? std::atoi(argv[2]) : 10;
    char dirTemplate[] = "/tmp/vantrel-coldstart.XXXXXX";
    const char *dataDir = mkdtemp(dirTemplate);
    if (!dataDir) {
        std::perror("mkdtemp");
        return 1;
    }

    launchOnce(app, dataDir); // warm the file cache; a cold start here means a fresh process
    std::vector<double> frames, memory;
    for (int i = 0; i < runs; ++i) {
        const Run r = launchOnce(app, dataDir);
        if (r.firstFrameMs < 0) {
            std::fprintf(stderr, "run %d: the app reported no first frame\n", i + 1);
            return 1;
        }
        frames.push_back(r.firstFrameMs);
        memory.push_back(r.peakMb);
        std::printf("run %2d: first frame %7.1f ms, peak memory %6.1f MB\n", i + 1, r.firstFrameMs, r.peakMb);
    }
    std::printf("cold start, median of %d: first frame %.1f ms (target < 400), peak memory %.1f MB (target < 120)\n",
                runs, median(frames), median(memory));
    std::string cleanup = std::string("rm -rf '") + dataDir + "'";
    return std::system(cleanup.c_str()) == 0 ? 0 : 1;
}
