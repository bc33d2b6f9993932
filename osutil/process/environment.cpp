// References to environment variables in texts.
#include <algorithm>
#include <cstring>

#include "genutil/string/storage.h"
#include "osprocess.h"
#include "osutil/platform/process/processes.h"

using namespace genutil;

namespace {

constexpr std::size_t kMostOfName = 255, kMostOfValue = 255;
// Values may refer to themselves, so the search ends after this number of consecutive replacements
// without progress towards the end of the text.
constexpr int kMostWithoutProgress = 1000;

struct Reference {
    const char *begin, *end;  // positions of the two signs
};

// Finds the first reference from `from` on. A "%" is never part of a longer character.
bool FindReference(const char* from, Reference* reference) {
    reference->begin = std::strchr(from, '%');
    reference->end = reference->begin ? std::strchr(reference->begin + 1, '%') : nullptr;
    return reference->end != nullptr;
}

}  // namespace

CGNString OSExpandEnvironmentVariables(const CGNString& text) {
    CGNString expanded(text);
    Reference reference;
    std::size_t from = 0;
    std::size_t least = expanded.GetLength();  // minimum number of bytes left to search so far
    for (int count = 0; count < kMostWithoutProgress;) {
        const char* const whole = expanded;
        if (!FindReference(whole + std::min<std::size_t>(from, expanded.GetLength()), &reference))
            break;
        const auto at = static_cast<std::size_t>(reference.begin - whole);
        const auto length = static_cast<std::size_t>(reference.end - reference.begin - 1);
        char name[kMostOfName + 1], value[kMostOfValue + 1];
        const std::size_t used = std::min(length, kMostOfName);
        std::memcpy(name, reference.begin + 1, used);
        name[used] = 0;
        const bool known = platform::ReadVariable(name, value, sizeof value);
        const std::size_t valueLength = known ? std::strlen(value) : 0;
        if (known) {
            StringStorage::Splice(expanded, reference.begin, reference.end + 1,
                                  {value, valueLength}, Placing::kRebuilt);
            ++count;
        }
        // Not the end of the value. Programs rely on this because of the values that they store in
        // variables.
        const std::size_t behind = at + length + 2;
        from = behind > valueLength ? behind - valueLength : 0;
        const std::size_t left =
            expanded.GetLength() - std::min<std::size_t>(from, expanded.GetLength());
        if (left < least) {
            least = left;
            count = 0;
        }
    }
    return expanded;
}
