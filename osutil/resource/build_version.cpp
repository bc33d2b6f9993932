// COSBuildVersion: the version of a file, as numbers and as text.
#include <cstddef>

#include "genutil/allocate.h"
#include "osbuildversion.h"
#include "osutil/platform/resource/modules.h"
#include "osutil/resource/resource_file.h"

// Programs of the suite hold versions by value.
static_assert(sizeof(void*) != 4 || sizeof(COSBuildVersion) == 20 + 2 * sizeof(CGNString));

COSBuildVersion::COSBuildVersion(const char* file)
    : m_major(0),
      m_minor(0),
      m_maintenance(0),
      m_patch(0),
      m_build(0),
      m_language(0),
      m_file(file) {}

unsigned char COSBuildVersion::Init() {
    std::size_t size = 0;
    const genutil::Owned<unsigned char> resource(
        genutil::platform::ReadVersionResource(m_file, &size));
    genutil::VersionRecord record;
    if (!resource.Get() || !genutil::ReadVersionRecord({resource.Get(), size}, &record)) return 0;
    m_major = static_cast<std::int16_t>(record.high >> 16);
    m_minor = static_cast<std::int16_t>(record.high);
    m_maintenance = static_cast<std::int32_t>(record.low >> 16);
    // The same number under two names, since programs use either.
    m_patch = m_build = static_cast<std::int32_t>(record.low & 0xFFFF);
    m_language = static_cast<std::int32_t>(record.language);
    return 1;
}

// The blanks surround a qualifier after the numbers and precede a suffix. A release has neither.
CGNString& COSBuildVersion::GetVersionString() {
    constexpr char kLabel[] = "Version", kQualifier[] = "", kSuffix[] = "";
    if (m_build < 1)
        m_text.sprintf("%s %d.%01d.%02ld %s", kLabel, m_major, m_minor, long{m_maintenance},
                       kQualifier);
    else
        m_text.sprintf("%s %d.%01d.%02ld %s %03ld", kLabel, m_major, m_minor, long{m_maintenance},
                       kQualifier, long{m_build});
    m_text += " ";
    m_text += kSuffix;
    return m_text;
}
