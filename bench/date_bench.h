// Declarations shared by date_bench.cpp and the peers on each system.
#pragma once

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <ctime>
#include <random>
#include <string>
#include <vector>

#include "gendate.h"
#include "mbutil.h"

constexpr long kStart = 1262322000, kSecondsOfYear = 365 * 86400;  // 2010 in New York

// The moments of a log, second by second through a year, or random moments since 1970.
enum class Order { kLog, kRandom };

class Moments {
  public:
    explicit Moments(Order order) : m_random(order == Order::kRandom) {
        std::mt19937 engine(6);
        for (long& moment : m_table) moment = static_cast<long>(engine() & 0x7FFFFFFF);
    }
    long Next() {
        const long i = m_next++;
        return m_random ? m_table[static_cast<std::size_t>(i) % kSize]
                        : kStart + i % kSecondsOfYear;
    }

  private:
    static constexpr std::size_t kSize = 4096;
    bool m_random;
    long m_next = 0;
    std::array<long, kSize> m_table;
};

// The same patterns in four languages.
struct Style {
    const char *name, *locale;
    int codeSet;
    const char *shortDate, *longDate, *time;
    bool dateInLong;
    const char* c;
    const char16_t* icu;
    const char* fmt;
};
constexpr Style kStyles[] = {
    {"English short date and time", "en_US", mbWestern, "MM/dd/yyyy", "dddd, MMMM dd, yyyy",
     "hh:mm:ss tt", false, "%m/%d/%Y %I:%M:%S %p", u"MM/dd/yyyy hh:mm:ss a",
     "{:%m/%d/%Y %I:%M:%S %p}"},
    {"English long date and time", "en_US", mbWestern, "MM/dd/yyyy", "dddd, MMMM dd, yyyy",
     "hh:mm:ss tt", true, "%A, %B %d, %Y %I:%M:%S %p", u"EEEE, MMMM dd, yyyy hh:mm:ss a",
     "{:%A, %B %d, %Y %I:%M:%S %p}"},
    {"Japanese long date and time", "ja_JP", mbShiftJis, "yyyy/MM/dd",
     "yyyy'\x94\x4E'MM'\x8C\x8E'dd'\x93\xFA'", "H:mm:ss", true, "%Y年%m月%d日 %H:%M:%S",
     u"yyyy年MM月dd日 H:mm:ss", "{:%Y年%m月%d日 %H:%M:%S}"},
};

inline constexpr struct {
    Order order;
    const char* name;
} kOrders[] = {{Order::kLog, "a log"}, {Order::kRandom, "at random"}};

template <class Run, class... Arguments>
void Add(const std::string& name, const char* who, Run run, Arguments... arguments) {
    benchmark::RegisterBenchmark((name + "/" + who).c_str(),
                                 [=](benchmark::State& state, auto... all) { run(state, all...); },
                                 arguments...);
}

template <class Convert>
void FromLocalBy(benchmark::State& state, Order order, Convert convert) {
    Moments moments(order);
    std::vector<struct tm> times(4096);
    for (struct tm& local : times) {
        CGNDateTime::LocalTimeTS(moments.Next(), local);
        local.tm_isdst = -1;
    }
    std::size_t i = 0;
    for (auto _ : state) {
        struct tm local = times[i++ % 4096];
        benchmark::DoNotOptimize(convert(&local));
    }
}

// For each system: the zone of New York, its name there, and the peers.
extern const char* const kZone;
void SetZone();
void AddStylePeers(const std::string& which, const Style& style, Order order);
void AddLocalPeers(const std::string& order, Order which);
void AddThreadPeers(const std::string& order, Order which);
