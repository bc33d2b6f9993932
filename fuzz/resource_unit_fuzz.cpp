// Resource files, and version resources alone. The first byte chooses which. The second and third
// are the number of a text to look for.
#include <cstdint>
#include <initializer_list>

#include "fuzz/check.h"
#include "osutil/resource/resource_file.h"

using namespace genutil;

namespace {

volatile unsigned g_sum;  // so that everything is read

void CheckVersion(Bytes resource) {
    VersionRecord record;
    if (!ReadVersionRecord(resource, &record)) return;
    Check(resource.Size() >= 92 && record.language <= 0xFFFF, "a version");
}

void CheckText(const ResourceStrings& strings, unsigned id) {
    ResourceText text;
    if (!strings.Find(id, &text)) return;
    Check(text.units && text.count > 0 && text.count <= 0xFFFF, "a text");
    for (std::size_t i = 0; i < text.count; ++i) g_sum = g_sum + text.Unit(i);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    const Bytes bytes(data + 3, size - 3);
    if (data[0] & 1) {
        CheckVersion(bytes);
        return 0;
    }
    ResourceFile file;
    if (!file.Open(bytes)) return 0;
    const unsigned number = data[1] | unsigned{data[2]} << 8;
    ResourceStrings strings;
    strings.Fill(file, number);
    for (const unsigned id : {0u, 15u, 16u, 1200u, 25048u, 65535u, number}) CheckText(strings, id);
    CheckVersion(file.FindVersion(number));
    return 0;
}
