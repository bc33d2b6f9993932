#include "osutil/platform/file/path_units.h"

#include <cstring>

#include "genutil/mbutil/step.h"
#include "genutil/mbutil/wide_convert.h"
#include "mbutil.h"

namespace genutil::platform {

namespace {

// Converts character by character, for a path that contains bytes that do not convert.
std::size_t ConvertWhatConverts(unsigned short* out, const char* path, std::size_t bytes) {
    const unsigned short* const begin = out;
    for (std::size_t at = 0; at < bytes;) {
        const std::size_t step = g_currentStep ? StepLength(*g_currentStep, Bytes(path + at)) : 1;
        const std::size_t length = step < bytes - at ? step : bytes - at;
        if (ToWideCharacter(out, path + at, length) == static_cast<int>(length)) {
            ++out;
        } else {
            for (std::size_t i = 0; i < length; ++i)
                *out++ = static_cast<unsigned short>(kRawByte + *Bytes(path + at + i));
        }
        at += length;
    }
    return static_cast<std::size_t>(out - begin);
}

}  // namespace

PathUnits::PathUnits(const char* path) {
    if (!path) return;
    const std::size_t bytes = std::strlen(path);
    unsigned short* const out = m_buffer.Reserve(bytes + 1);
    if (!out) return;
    const long count = ToWide(out, bytes, path, bytes);
    m_count = count >= 0 ? static_cast<std::size_t>(count) : ConvertWhatConverts(out, path, bytes);
    out[m_count] = 0;
}

void NarrowedName::CopyTo(char* out, std::size_t size) const {
    const char* const name = m_name ? m_name : "";
    out[mbstrncpyi(out, name, static_cast<unsigned>(size - 1))] = 0;
}

}  // namespace genutil::platform
