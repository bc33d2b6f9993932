// The system's conversion, by way of UTF-16 if neither side is UTF-16.
#include "bench/unicode_bench.h"

#include <windows.h>

namespace {

void BySystem(benchmark::State& state, const std::string& text, const Encoding& from,
              const Encoding& to) {
    std::string out(text.size() * 4 + 16, '\0');
    std::wstring units(text.size() + 16, L'\0');
    for (auto _ : state) {
        const auto* wide = reinterpret_cast<const wchar_t*>(text.data());
        int count = static_cast<int>(text.size() / 2);
        if (from.codeSet != mbUtf16) {
            auto* const to16 =
                to.codeSet == mbUtf16 ? reinterpret_cast<wchar_t*>(out.data()) : units.data();
            count =
                MultiByteToWideChar(from.windowsPage, 0, text.data(), static_cast<int>(text.size()),
                                    to16, static_cast<int>(text.size()));
            wide = to16;
        }
        if (to.codeSet != mbUtf16)
            count = WideCharToMultiByte(to.windowsPage, 0, wide, count, out.data(),
                                        static_cast<int>(out.size()), nullptr, nullptr);
        if (count == 0) return state.SkipWithError("not converted");
        benchmark::DoNotOptimize(out.data());
    }
}

}  // namespace

const ConversionPeer kConversionPeers[] = {{"/MultiByteToWideChar", BySystem}};
const std::size_t kConversionPeerCount = 1;
