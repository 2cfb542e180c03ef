#include <benchmark/benchmark.h>

#include <QApplication>

#include <cstdio>
#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace {

// Forwards everything to the reporter the command line chose (console, JSON, CSV) and,
// once all benchmarks have run, prints how near each operation came to its floor.
//
// A floor is the benchmark of the same name with "_Floor" right after the function name
// and the same arguments: "BM_Save/20/real_time" and "BM_Save_Floor/20/real_time". Each
// figure is the time the benchmark reports: real time when it measures real or manual
// time, CPU time otherwise.
class FloorSummaryReporter : public benchmark::BenchmarkReporter {
public:
    explicit FloorSummaryReporter(benchmark::BenchmarkReporter *inner) : mInner(inner) {}

    bool ReportContext(const Context &context) override
    {
        mInner->SetOutputStream(&GetOutputStream());
        mInner->SetErrorStream(&GetErrorStream());
        return mInner->ReportContext(context);
    }

    void ReportRuns(const std::vector<Run> &runs) override
    {
        mInner->ReportRuns(runs);
        for (const Run &run : runs) {
            if (!summed(run))
                continue;
            const std::string name = run.benchmark_name();
            const Figure figure = figureOf(run);
            const std::string::size_type at = floorSuffixAt(run.run_name.function_name);
            if (at == std::string::npos) {
                if (!mFigures.count(name))
                    mOrder.push_back(name);
                mFigures[name] = figure;
            } else {
                mFloors[std::string(name).erase(at, kFloorSuffix.size())] = figure;
            }
        }
    }

    void Finalize() override
    {
        mInner->Finalize();
        if (mOrder.empty())
            return;
        // JSON and CSV stay parsable: the table then goes with the notes.
        const bool console = dynamic_cast<benchmark::ConsoleReporter *>(mInner) != nullptr;
        std::ostream &out = console ? GetOutputStream() : GetErrorStream();
        std::size_t width = 9;
        for (const std::string &name : mOrder)
            width = std::max(width, name.size());
        const std::string rule(width + 40, '-');
        out << '\n' << "Figures against their floors\n" << rule << '\n';
        out << pad("Benchmark", width) << pad("Figure", 14, true) << pad("Floor", 14, true) << pad("Ratio", 12, true)
            << '\n'
            << rule << '\n';
        for (const std::string &name : mOrder) {
            const Figure &figure = mFigures[name];
            out << pad(name, width) << pad(figure.text(), 14, true);
            const auto floor = mFloors.find(name);
            if (floor == mFloors.end()) {
                out << pad("-", 14, true) << pad("-", 12, true) << '\n';
                continue;
            }
            char ratio[32] = "-";
            if (floor->second.seconds > 0)
                std::snprintf(ratio, sizeof ratio, "%.2fx", figure.seconds / floor->second.seconds);
            out << pad(floor->second.text(), 14, true) << pad(ratio, 12, true) << '\n';
        }
        out << std::flush;
    }

private:
    static inline const std::string kFloorSuffix = "_Floor";

    struct Figure {
        double value = 0; // in unit
        benchmark::TimeUnit unit = benchmark::kNanosecond;
        double seconds = 0;

        std::string text() const
        {
            char buffer[48];
            std::snprintf(buffer, sizeof buffer,
                          value >= 100  ? "%.0f %s"
                          : value >= 10 ? "%.1f %s"
                                        : "%.2f %s",
                          value, benchmark::GetTimeUnitString(unit));
            return buffer;
        }
    };

    // Repeated runs are summed up by their mean and median; the spread, the complexity
    // coefficients and failed runs have no figure to set against a floor.
    static bool summed(const Run &run)
    {
        if (run.error_occurred || run.report_big_o || run.report_rms)
            return false;
        if (run.run_type == Run::RT_Aggregate)
            return run.aggregate_name == "mean" || run.aggregate_name == "median";
        return run.repetitions <= 1;
    }

    static Figure figureOf(const Run &run)
    {
        Figure f;
        const bool realTime = !run.run_name.time_type.empty();
        f.value = realTime ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
        f.unit = run.time_unit;
        f.seconds = f.value / benchmark::GetTimeUnitMultiplier(run.time_unit);
        return f;
    }

    // Where "_Floor" ends the function's own name (before a captured label, if any).
    static std::string::size_type floorSuffixAt(const std::string &functionName)
    {
        for (auto at = functionName.find(kFloorSuffix); at != std::string::npos;
             at = functionName.find(kFloorSuffix, at + 1)) {
            const auto end = at + kFloorSuffix.size();
            if (end == functionName.size() || functionName[end] == '/')
                return at;
        }
        return std::string::npos;
    }

    static std::string pad(const std::string &text, std::size_t width, bool right = false)
    {
        const std::string fill(text.size() < width ? width - text.size() : 1, ' ');
        return right ? fill + text : text + fill;
    }

    benchmark::BenchmarkReporter *mInner;
    std::vector<std::string> mOrder;
    std::map<std::string, Figure> mFigures;
    std::map<std::string, Figure> mFloors;
};

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::benchmark::Initialize(&argc, argv);
    FloorSummaryReporter reporter(::benchmark::CreateDefaultDisplayReporter());
    ::benchmark::RunSpecifiedBenchmarks(&reporter);
    ::benchmark::Shutdown();
    return 0;
}
