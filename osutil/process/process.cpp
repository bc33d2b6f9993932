// Other programs: starting, running, opening documents.
#include "genutil/string/storage.h"
#include "osprocess.h"
#include "osutil/platform/process/processes.h"

using namespace genutil;

namespace {

// Appends bytes, because a piece may end within a character.
bool AppendOutput(void* context, const char* bytes, std::size_t count) {
    CGNString& output = *static_cast<CGNString*>(context);
    const std::uint64_t length = output.GetLength(), needed = length + count;
    if (needed > kMaxTextLength) return false;
    if (needed >= StringStorage::Capacity(output)) {
        // Reserves half as much again, so that a long output is not copied for every piece.
        const std::uint64_t room = needed + needed / 2 + 64;
        output.AllocateBuffer(static_cast<unsigned>(room < kMaxTextLength ? room : needed));
        if (needed >= StringStorage::Capacity(output)) return false;
    }
    StringStorage::Store(output, bytes, length, count);
    return true;
}

}  // namespace

long OSRunSyncProcess(const CGNString& commandLine, CGNString& output) {
    return platform::RunProgram(commandLine, AppendOutput, &output);
}

long OSRunAsyncProcess(const CGNString& commandLine, CGNString& error) {
    const unsigned long code = platform::StartProgram(commandLine);
    if (code == 0) return 1;
    char text[1024];
    platform::DescribeError(code, text, sizeof text);
    error = text;
    return 0;
}

long OSOpenFile(const CGNString& path) {
    return platform::OpenDocument(path);
}
