#include "BenchSupport.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace Vellacore {
namespace Bench {

namespace {

// The usual console report, then every family's times relative to Vellacore's: above 1 the peer is
// slower. Benchmark names are Family/Flavour.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    using ConsoleReporter::ConsoleReporter;

    void ReportRuns(std::vector<Run> const& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (Run const& run : runs)
            if (IsTiming(run))
                Record(run.run_name.function_name, run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(run.time_unit));
    }

    void Finalize() override
    {
        ConsoleReporter::Finalize();
        PrintRatios();
    }

private:
    // Repetitions of one benchmark are averaged. Their mean aggregate is that same average, so
    // counting it as well changes nothing, and keeps the table when only aggregates are reported.
    static bool IsTiming(Run const& run)
    {
        return !run.error_occurred && (run.run_type == Run::RT_Iteration || run.aggregate_name == "mean");
    }

    struct Timing {
        double totalSeconds = 0.0;
        int runs = 0;
        double Mean() const { return totalSeconds / runs; }
    };
    struct Family {
        std::string name;
        std::map<std::string, Timing> flavours;
    };

    void Record(std::string const& benchmarkName, double seconds)
    {
        std::string::size_type const slash = benchmarkName.find('/');
        if (slash == std::string::npos)
            return;
        std::string const familyName = benchmarkName.substr(0, slash);
        auto family = std::find_if(m_Families.begin(), m_Families.end(), [&](Family const& f) { return f.name == familyName; });
        if (family == m_Families.end())
            family = m_Families.insert(m_Families.end(), Family{familyName, {}});
        Timing& timing = family->flavours[benchmarkName.substr(slash + 1)];
        timing.totalSeconds += seconds;
        ++timing.runs;
    }

    void PrintRatios() const
    {
        std::ostream& out = GetOutputStream();
        std::string::size_type width = 0;
        for (Family const& family : m_Families)
            width = std::max(width, family.name.size());
        out << "\nTime relative to " << FlavourName<Fixed> << " (above 1: slower than " << FlavourName<Fixed> << ")\n";
        for (Family const& family : m_Families) {
            out << family.name << std::string(width - family.name.size(), ' ');
            auto const base = family.flavours.find(FlavourName<Fixed>);
            for (char const* flavour : {FlavourName<Fixed>, FlavourName<Fix16Value>, FlavourName<float>}) {
                auto const timing = family.flavours.find(flavour);
                out << "   " << flavour << ' ';
                if (base == family.flavours.end() || timing == family.flavours.end())
                    out << "     -";
                else
                    out << Ratio(timing->second.Mean() / base->second.Mean());
            }
            out << '\n';
        }
    }

    static std::string Ratio(double ratio)
    {
        char text[16];
        std::snprintf(text, sizeof text, "%5.2fx", ratio);
        return text;
    }

    std::vector<Family> m_Families;
};

// Colour only on a terminal, as the library's own console output does by default.
benchmark::ConsoleReporter::OutputOptions ConsoleOptions()
{
    return isatty(STDOUT_FILENO) ? benchmark::ConsoleReporter::OO_ColorTabular : benchmark::ConsoleReporter::OO_Tabular;
}

} // namespace

} // namespace Bench
} // namespace Vellacore

int main(int argc, char** argv)
{
    using namespace Vellacore;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;

    // Fixed::Sin reads the tables.
    Fixed::InitLookupTables();
    Bench::RegisterScalarBenchmarks();
    Bench::RegisterMatrixBenchmarks();
    Bench::RegisterIntersectBenchmarks();
    Bench::RegisterDrawTreeBenchmarks();

    Bench::RatioReporter reporter(Bench::ConsoleOptions());
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    Fixed::ExitLookupTables();
    return 0;
}
