// genutil trace: shows, selects, merges and follows trace files.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>

#include "tools/genutil/command.h"
#include "tools/genutil/input.h"
#include "tools/genutil/log_line.h"
#include "tools/genutil/system.h"

namespace {

// -- Selection -----------------------------------------------------------------------------------

struct Selection {
    std::vector<std::string> modules, threads;
    std::string from, to;

    bool Admits(const LogLine& line) const {
        return Contains(modules, line.module) && Contains(threads, line.thread) &&
               (from.empty() || Part(line.time, from) >= from) &&
               (to.empty() || (!line.time.empty() && Part(line.time, to) <= to));
    }

  private:
    static bool Contains(const std::vector<std::string>& list, const std::string& text) {
        return list.empty() || std::find(list.begin(), list.end(), text) != list.end();
    }
    // The part of a time to which a limit refers: as much as the limit has, with or without a date.
    static std::string Part(const std::string& time, const std::string& limit) {
        const std::size_t begin = limit[2] == ':' ? 11 : 0;
        return time.size() < begin ? "" : time.substr(begin, limit.size());
    }
};

// Accepts the beginning of "2026-11-21 09:30:12.000", at least the date, or of its time of day, at
// least hours and minutes.
bool IsLimit(std::string* text) {
    if (text->empty()) return true;
    if (text->size() > 10 && (*text)[10] == 'T') (*text)[10] = ' ';
    const std::string form = "0000-00-00 00:00:00.000";
    for (const std::size_t begin : {0u, 11u}) {
        if (text->size() < (begin == 0 ? 10u : 5u) || text->size() > form.size() - begin) continue;
        bool fits = true;
        for (std::size_t i = 0; i < text->size() && fits; ++i) {
            const char wanted = form[begin + i], given = (*text)[i];
            fits = wanted == '0' ? given >= '0' && given <= '9' : given == wanted;
        }
        if (fits) return true;
    }
    return false;
}

// -- Files ---------------------------------------------------------------------------------------

// The lines of a file. It is open only while it is being read, because an open file cannot be
// renamed on Windows.
class LogFile {
  public:
    explicit LogFile(std::string path) : m_path(std::move(path)) {}

    const std::string& Path() const { return m_path; }
    const LogLine& Parsed() const { return m_parsed; }
    const std::string& Line() const { return m_line; }
    bool HasLine() const { return m_hasLine; }
    bool IsAdmitted() const { return m_isAdmitted; }

    // Reads the next line. At the end of the file there is none, for the time being. A last line
    // without an end is one only if `isLast`.
    void Next(const Selection& selection, bool isLast) {
        std::size_t end, searched = m_at;
        while ((end = m_text.find('\n', searched)) == std::string::npos) {
            searched = m_text.size() - m_at;
            if (!Fill()) break;
        }
        m_hasLine = end != std::string::npos || (isLast && m_at < m_text.size());
        if (!m_hasLine) return;
        m_line = m_text.substr(m_at, end - m_at);
        m_at = end == std::string::npos ? m_text.size() : end + 1;
        LogLine parsed = ParseLogLine(m_line);
        if (parsed.begins && parsed.time.empty()) parsed.time = m_parsed.time;
        if (parsed.begins) {
            m_parsed = std::move(parsed);
            m_isAdmitted = selection.Admits(m_parsed);
        } else {
            m_parsed.begins = false;
        }
    }

    // Continues with a file that has replaced this one or has started over.
    void NoticeNewFile() {
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(PathOf(m_path), error);
        if (error || size >= m_offset) return;
        const std::string older = m_path + ".1";
        const std::uintmax_t olderSize = std::filesystem::file_size(PathOf(older), error);
        if (!error && olderSize > m_offset) ReadFrom(older, olderSize - m_offset);
        m_offset = 0;
    }

    // Returns false if the file cannot be read.
    bool IsReadable() const {
        return m_path == "-" || std::ifstream(m_path, std::ios::binary).good();
    }

  private:
    bool Fill() {
        m_text.erase(0, m_at);
        m_at = 0;
        return ReadFrom(m_path, kChunk) > 0;
    }
    std::size_t ReadFrom(const std::string& path, std::uintmax_t count) {
        const std::size_t before = m_text.size();
        m_text.resize(before + static_cast<std::size_t>(count));
        std::size_t done = 0;
        if (path == "-") {
            done = std::fread(&m_text[before], 1, m_text.size() - before, stdin);
        } else {
            std::ifstream file(path, std::ios::binary);
            file.seekg(static_cast<std::streamoff>(m_offset));
            if (file) file.read(&m_text[before], static_cast<std::streamsize>(count));
            if (file || file.eof()) done = static_cast<std::size_t>(file.gcount());
        }
        m_text.resize(before + done);
        m_offset += done;
        return done;
    }

    static constexpr std::size_t kChunk = std::size_t{1} << 18;

    std::string m_path;
    std::uintmax_t m_offset = 0;
    std::string m_text;
    std::size_t m_at = 0;
    std::string m_line;
    LogLine m_parsed;
    bool m_hasLine = false, m_isAdmitted = false;
};

using LogFiles = std::vector<std::unique_ptr<LogFile>>;

// The file whose next line comes first.
LogFile* Earliest(const LogFiles& files) {
    LogFile* earliest = nullptr;
    for (const auto& file : files)
        if (file->HasLine() && (!earliest || file->Parsed().time < earliest->Parsed().time))
            earliest = file.get();
    return earliest;
}

// Prints all lines up to the ends of the files. Returns the number of those printed.
std::size_t PrintLines(const LogFiles& files, const Selection& selection, bool isLast) {
    std::size_t count = 0;
    for (const auto& file : files) file->Next(selection, isLast);
    while (LogFile* file = Earliest(files)) {
        do {  // a message with all its lines
            if (file->IsAdmitted()) {
                std::fwrite(file->Line().data(), 1, file->Line().size(), stdout);
                std::fputc('\n', stdout);
                ++count;
            }
            file->Next(selection, isLast);
        } while (file->HasLine() && !file->Parsed().begins);
    }
    return count;
}

// Ends when standard output does not accept any more.
void Follow(const LogFiles& files, const Selection& selection) {
    while (std::fflush(stdout) == 0 && !std::ferror(stdout)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        for (const auto& file : files) file->NoticeNewFile();
        PrintLines(files, selection, false);
    }
}

Status RunTrace(const Arguments& arguments) {
    Selection selection;
    bool follow = false;
    std::vector<std::string> paths;
    const std::vector<Option> options = {
        {"--module", nullptr, nullptr, nullptr, &selection.modules},
        {"--thread", nullptr, nullptr, nullptr, &selection.threads},
        {"--from", nullptr, &selection.from, nullptr},
        {"--to", nullptr, &selection.to, nullptr},
        {"--follow", "-f", nullptr, &follow}};
    if (!ParseArguments(arguments, options, &paths)) return kError;
    if (paths.empty()) return Complain("trace: name a file, or \"-\" for standard input");
    for (std::string* limit : {&selection.from, &selection.to})
        if (!IsLimit(limit))
            return Complain("'" + *limit +
                            "' is not a time such as \"2026-11-21 09:30\" or 09:30:12");
    LogFiles files;
    Status status = kOk;
    for (const std::string& path : paths) {
        auto file = std::make_unique<LogFile>(path);
        if (file->IsReadable())
            files.push_back(std::move(file));
        else
            status = Complain(DisplayName(path) + ": cannot be read");
    }
    if (PrintLines(files, selection, !follow) == 0) status = Worse(status, kLoss);
    if (follow && !files.empty()) Follow(files, selection);
    return status;
}

}  // namespace

const Command kTraceCommand = {
    "trace", "FILE...                   shows, selects, merges and follows trace files",
    "genutil trace [--module NAME]... [--thread NUMBER]... [--from TIME] [--to TIME] [--follow]\n"
    "              FILE...\n"
    "\n"
    "Shows the messages of trace files in the order of their times. Messages of several files are\n"
    "merged. Lines without a date belong to the message before them. The default form of lines,\n"
    "JSON lines and lines that begin with a date such as 2026-11-21 09:30:12 are understood; the\n"
    "last have no module or thread. Times are compared as they are written. \"-\" means standard\n"
    "input.\n"
    "\n"
    "  --module NAME     only messages of this module; may be repeated\n"
    "  --thread NUMBER   only messages of this thread; may be repeated\n"
    "  --from TIME       only messages from this time on: 2026-11-21, \"2026-11-21 09:30\" or, on\n"
    "                    any day, 09:30, with or without seconds\n"
    "  --to TIME         only messages up to this time, including all of its minute or second\n"
    "  --follow, -f      waits for new messages, also when the file starts over or is replaced\n"
    "\n"
    "Exit status: 0 messages were shown, 1 there are none, 2 wrong usage or a file cannot be\n"
    "read.\n",
    RunTrace};
