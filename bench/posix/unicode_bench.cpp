// ICU and the C library's iconv, each with a converter that is opened once.
#include "bench/unicode_bench.h"

#include <iconv.h>
#include <unicode/ucnv.h>

namespace {

void ByIconv(benchmark::State& state, const std::string& text, const Encoding& from,
             const Encoding& to) {
    std::string out(text.size() * 4 + 16, '\0');
    const iconv_t handle = iconv_open(to.iconvName, from.iconvName);
    std::string source = text;
    for (auto _ : state) {
        char *in = source.data(), *dst = out.data();
        std::size_t left = source.size(), room = out.size();
        iconv(handle, nullptr, nullptr, nullptr, nullptr);
        if (iconv(handle, &in, &left, &dst, &room) == static_cast<std::size_t>(-1))
            state.SkipWithError("not converted");
        benchmark::DoNotOptimize(out.data());
    }
    iconv_close(handle);
}

void Icu(benchmark::State& state, const std::string& text, const Encoding& from,
         const Encoding& to) {
    UErrorCode error = U_ZERO_ERROR;
    UConverter* source = ucnv_open(from.icuName, &error);
    UConverter* target = ucnv_open(to.icuName, &error);
    std::string out(text.size() * 4 + 16, '\0');
    UChar* const units = reinterpret_cast<UChar*>(out.data());
    for (auto _ : state) {
        error = U_ZERO_ERROR;
        if (to.codeSet == mbUtf16) {
            ucnv_toUChars(source, units, static_cast<int32_t>(out.size() / 2), text.data(),
                          static_cast<int32_t>(text.size()), &error);
        } else if (from.codeSet == mbUtf16) {
            ucnv_fromUChars(target, out.data(), static_cast<int32_t>(out.size()),
                            reinterpret_cast<const UChar*>(text.data()),
                            static_cast<int32_t>(text.size() / 2), &error);
        } else {
            char* dst = out.data();
            const char* in = text.data();
            ucnv_convertEx(target, source, &dst, dst + out.size(), &in, in + text.size(), nullptr,
                           nullptr, nullptr, nullptr, true, true, &error);
        }
        if (U_FAILURE(error)) state.SkipWithError(u_errorName(error));
        benchmark::DoNotOptimize(out.data());
    }
    ucnv_close(source);
    ucnv_close(target);
}

}  // namespace

const ConversionPeer kConversionPeers[] = {{"/icu", Icu}, {"/iconv", ByIconv}};
const std::size_t kConversionPeerCount = 2;
