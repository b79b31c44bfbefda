// Reading header times, writing labels and counting seconds, beside the C library's strptime and strftime and
// beside the bare sum.
#include "Interleaved.h"
#include "core/String.h"
#include "time/Civil.h"
#include "time/Date.h"
#include "time/DateTool.h"
#include "time/Timezone.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <random>
#include <string>
#include <vector>

namespace {

using Yul::Date;
using Yul::DateTool;
using Yul::String;

constexpr int TIMES = 4096; // different times in a job
constexpr int ROUNDS = 41;

/// One time in all the shapes that the jobs read.
struct Sample
{
    Date date;
    std::tm parts{};
    std::string text;
};

long sink; // keeps results alive

[[noreturn]] void differ(char const * job, std::string const & ours, std::string const & peer)
{
    std::fprintf(stderr, "%s: ours gives '%s', the peer '%s'\n", job, ours.c_str(), peer.c_str());
    std::exit(1);
}

/// Runs both operations over all samples in turns and prints a row.
template <class Ours, class Peer>
void measure(char const * job,
             char const * peer_name,
             double least,
             std::vector<Sample> & samples,
             Ours const & ours,
             Peer const & peer)
{
    auto const all = [&](auto const & operation) {
        return [&samples, &operation] {
            for (Sample & sample : samples)
                sink += operation(sample);
        };
    };
    auto const times = bench::medians(ROUNDS, {all(ours), all(peer)});
    bench::printRow(job, peer_name, times[0], times[1], TIMES, least);
}

std::vector<Sample> makeSamples(char const * format)
{
    std::mt19937_64 random(1);
    std::vector<Sample> samples(TIMES);
    for (Sample & sample : samples) {
        sample.date.set(static_cast<long>(random() % 2'500'000'000)); // to 2049, where two-digit years reach
        std::time_t const seconds = sample.date.getSeconds();
        gmtime_r(&seconds, &sample.parts);
        char text[80];
        sample.text.assign(text, std::strftime(text, sizeof text, format, &sample.parts));
        std::transform(sample.text.begin(), sample.text.end(), sample.text.begin(),
                       [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
    }
    return samples;
}

/// Decoding counts the seconds too, so the peer does: strptime, then timegm.
void benchDecode(char const * job, char const * format)
{
    std::vector<Sample> samples = makeSamples(format);
    Date date;
    std::tm parts{};
    auto const ours = [&](Sample const & sample) {
        DateTool::decode(sample.text.c_str(), date);
        return date.getSeconds();
    };
    auto const peer = [&](Sample const & sample) {
        parts = std::tm{};
        strptime(sample.text.c_str(), format, &parts);
        return static_cast<long>(timegm(&parts));
    };
    for (Sample const & sample : samples)
        if (ours(sample) != peer(sample))
            differ(job, std::to_string(ours(sample)), std::to_string(peer(sample)));
    measure(job, "strptime+timegm", 1, samples, ours, peer);
}

template <class Write> void benchWrite(char const * job, char const * format, Write write)
{
    std::vector<Sample> samples = makeSamples(format);
    String out;
    char text[80];
    auto const ours = [&](Sample const & sample) {
        write(sample.date, out);
        return static_cast<long>(out.length());
    };
    auto const peer = [&](Sample const & sample) {
        return static_cast<long>(std::strftime(text, sizeof text, format, &sample.parts));
    };
    for (Sample const & sample : samples) {
        ours(sample);
        if (out.view() != sample.text)
            differ(job, out.get(), sample.text);
    }
    measure(job, "strftime", 1, samples, ours, peer);
}

/// What the sum costs when nothing is checked.
long bareSum(Date const & date)
{
    long const since_1900 = date.year - 1900;
    long const leap = since_1900 / 4 - 17 - (date.month < 3 && since_1900 % 4 == 0 ? 1 : 0);
    return static_cast<long>(date.second) + date.minute * 60 + date.hour * 3600 +
           (date.day - 1 + Yul::DateVal::num_day[date.month - 1] + leap + (date.year - 1970) * 365L) * 86400;
}

template <class Compute> void benchSeconds(char const * job, Compute compute)
{
    std::vector<Sample> samples = makeSamples("%H");
    auto const ours = [&](Sample & sample) { return compute(sample.date); };
    auto const peer = [](Sample & sample) { return bareSum(sample.date); };
    for (Sample & sample : samples)
        if (ours(sample) != peer(sample))
            differ(job, std::to_string(ours(sample)), std::to_string(peer(sample)));
    measure(job, "bare sum", 0.33, samples, ours, peer);
}

} // namespace

int main()
{
    std::printf("# %d random times a job; the peers are strptime with timegm, strftime and the bare sum\n",
                TIMES);
    benchDecode("decode 12Z 14 NOV 2026", "%HZ %d %b %Y");
    benchDecode("decode 1245Z 14 NOV 2026", "%H%MZ %d %b %Y");
    benchDecode("decode 12:45:30Z 14 NOV 2026", "%H:%M:%SZ %d %b %Y");
    benchDecode("decode 12 14 11 26", "%H %d %m %y");
    benchWrite("label 1245Z SAT 14 NOV 26", "%H%MZ %a %e %b %y", [](Date date, String & out) {
        date.second = Yul::Const::MISS;
        DateTool::createLabel(nullptr, date, Yul::Timezone(), 1, out);
    });
    benchWrite("label 12:45:30Z 14 NOV 26", "%H:%M:%SZ %e %b %y",
               [](Date const & date, String & out) { DateTool::createLabel(date, out); });
    benchWrite("text 2026-11-14T12:45:30Z", "%Y-%m-%dT%H:%M:%SZ",
               [](Date const & date, String & out) { date.toText("ISO8601", out); });
    benchWrite("text 12:45:30Z 14 NOV 2026", "%H:%M:%SZ %e %b %Y",
               [](Date const & date, String & out) { date.toText(out); });
    benchSeconds("computeSecs of DateVal", [](Date & date) { return date.DateVal::computeSecs(); });
    benchSeconds("computeSecs of Date, with weekday", [](Date & date) { return date.computeSecs(); });
    return sink == 0 ? 1 : 0;
}
