// iconv of the C library, and uchardet.
#include "bench/japanese_bench.h"

#include <iconv.h>

#include <vector>

#ifdef HAVE_UCHARDET
#include <uchardet.h>
#endif

namespace {

void ConvertByIconv(benchmark::State& state, Encoding from, Encoding to) {
    std::string text = TextIn(from);
    std::vector<char> out(text.size() * 5);
    const iconv_t handle = iconv_open(to.iconvName, from.iconvName);
    std::size_t left = 1;
    for (auto _ : state) {
        char *in = text.data(), *dst = out.data();
        std::size_t room = out.size();
        left = text.size();
        iconv(handle, nullptr, nullptr, nullptr, nullptr);
        iconv(handle, &in, &left, &dst, &room);
        benchmark::ClobberMemory();
    }
    iconv_close(handle);
    if (left != 0) state.SkipWithError("iconv stopped");
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

#ifdef HAVE_UCHARDET
int DetectByUchardet(const char* text, std::size_t n) {
    const uchardet_t handle = uchardet_new();
    uchardet_handle_data(handle, text, n);
    uchardet_data_end(handle);
    const std::string name = uchardet_get_charset(handle);
    uchardet_delete(handle);
    if (name == "ISO-2022-JP") return mbJis;
    if (name == "EUC-JP") return mbEucJp;
    if (name == "SHIFT_JIS") return mbShiftJis;
    return name.empty() || name == "ASCII" ? 0 : -1;
}
#endif

}  // namespace

void RegisterConversionPeers(const std::string& name, const Encoding& from, const Encoding& to) {
    benchmark::RegisterBenchmark((name + "/iconv").c_str(), ConvertByIconv, from, to);
}

void RegisterDetectionPeers() {
#ifdef HAVE_UCHARDET
    RegisterDetection("uchardet", DetectByUchardet);
    CountRightAnswers("uchardet", DetectByUchardet);
#endif
}
