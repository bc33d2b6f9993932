// genutil convert: converts files between encodings and reports losses.
#include <cstdio>
#include <cstdlib>
#include <map>
#include <vector>

#include "mbutil.h"
#include "tools/genutil/characters.h"
#include "tools/genutil/command.h"
#include "tools/genutil/output_file.h"
#include "tools/genutil/system.h"

namespace {

constexpr std::size_t kListed = 5;

struct Job {
    std::string from, to, out;
    bool force = false;
    bool guess = false;
    bool outIsFolder = false;
    std::vector<std::string> files;
    Encoding target{};
};

std::string OutputPath(const Job& job, const std::string& file) {
    if (!job.outIsFolder) return job.out;
    const char last = job.out.back();
    const std::size_t slash = file.find_last_of("/\\");
    return job.out + (last == '/' || last == '\\' ? "" : "/") +
           (slash == std::string::npos ? file : file.substr(slash + 1));
}

void ReportLosses(const Input& input, const Job& job, const mbConversion& conversion) {
    ClearProgress();
    const bool one = conversion.lost == 1;
    std::fprintf(stderr, "%s: %zu character%s lost in the conversion from %s to %s:\n",
                 input.name.c_str(), conversion.lost, one ? "" : "s",
                 NameOf(input.encoding).c_str(), NameOf(job.target).c_str());
    std::size_t listed = 0;
    const std::size_t known = conversion.lost < kListed ? conversion.lost : kListed;
    CharacterWalk walk(input);
    while (listed < known && walk.Next()) {
        if (walk.At() + walk.Bytes().size() <= conversion.lostAt[listed]) continue;
        const std::string utf8 = walk.ToUtf8();
        std::fprintf(stderr, "  %s%s%s\n", DescribePosition(walk).c_str(), utf8.empty() ? "" : "  ",
                     utf8.c_str());
        // More than one loss may be within a single character of this encoding.
        while (listed < known && conversion.lostAt[listed] < walk.At() + walk.Bytes().size())
            ++listed;
    }
    if (conversion.lost > known) std::fprintf(stderr, "  and %zu more\n", conversion.lost - known);
}

Status ConvertText(const Input& input, const Job& job, std::string* result) {
    std::size_t lostAt[kListed];
    mbConversion conversion = {};
    conversion.lostAt = lostAt;
    conversion.lostAtSize = kListed;
    const std::size_t skip = input.markLength;  // not text
    char* out = nullptr;
    if (!mbConvertAlloc(input.text.data() + skip, input.text.size() - skip, input.encoding.codeSet,
                        &out, job.target.codeSet, &conversion))
        return Complain(input.name + ": cannot be converted from " + NameOf(input.encoding) +
                        " to " + NameOf(job.target));
    if (job.target.marked) *result = "\xFF\xFE";
    result->append(out, conversion.produced);
    std::free(out);
    if (job.target.bigEndian) SwapUnits(result);
    if (conversion.lost == 0) return kOk;
    for (std::size_t i = 0; i < conversion.lost && i < kListed; ++i) lostAt[i] += skip;
    ReportLosses(input, job, conversion);
    return kLoss;
}

Status ConvertFile(const Job& job, const std::string& file) {
    const std::string path = job.out.empty() ? "" : OutputPath(job, file);
    if (!path.empty() && !MayWrite(path, job.force)) return kError;
    Input input;
    if (!ReadInput(file, job.from, job.guess, &input)) return kError;
    std::string result;
    if (input.text.size() >= kLargeFile) ShowProgress(input.name, "converting ");
    const Status status = ConvertText(input, job, &result);
    if (status == kError) return kError;
    if (result.size() >= kLargeFile && !path.empty()) ShowProgress(path, "writing ");
    if (path.empty()) ClearProgress();
    if (!path.empty()) return WriteFile(path, result) ? status : kError;
    if (std::fwrite(result.data(), 1, result.size(), stdout) != result.size())
        return Complain("standard output cannot be written");
    return status;
}

// Detects errors that are known before any file is modified.
bool CheckJob(Job* job) {
    const auto fail = [](const std::string& message) {
        Complain(message);
        return false;
    };
    if (job->files.empty()) return fail("convert: name a file, or \"-\" for standard input");
    if (job->to == "auto") return fail("convert: --to needs the name of an encoding");
    if (job->to.empty()) job->to = "utf-8";
    if (!CheckEncodingName(job->from) || !CheckEncodingName(job->to)) return false;
    job->target = *FindEncoding(job->to);
    job->outIsFolder = !job->out.empty() && KindOf(job->out) == FileKind::kFolder;
    if (job->files.size() > 1 && job->out.empty())
        return fail("convert: several files need an output folder: -o FOLDER");
    if (job->files.size() > 1 && !job->outIsFolder)
        return fail(job->out + ": is not a folder, which several files need");
    if (!job->outIsFolder) return true;
    std::map<std::string, std::string> sources;
    for (const std::string& file : job->files) {
        if (file == "-")
            return fail("convert: standard input has no file name; -o must name a file");
        const auto [known, added] = sources.emplace(OutputPath(*job, file), file);
        if (!added)
            return fail(known->second + " and " + file + " would both be written to " +
                        known->first);
    }
    return true;
}

Status RunConvert(const Arguments& arguments) {
    Job job;
    const std::vector<Option> options = {{"--from", nullptr, &job.from, nullptr},
                                         {"--to", nullptr, &job.to, nullptr},
                                         {"--output", "-o", &job.out, nullptr},
                                         {"--force", nullptr, nullptr, &job.force},
                                         {"--guess", nullptr, nullptr, &job.guess}};
    if (!ParseArguments(arguments, options, &job.files) || !CheckJob(&job)) return kError;
    Status status = kOk;
    for (std::size_t i = 0; i < job.files.size(); ++i) {
        PlaceInRow(i + 1, job.files.size());
        if (job.files.size() > 1) ShowProgress(job.files[i], "");
        status = Worse(status, ConvertFile(job, job.files[i]));
    }
    ClearProgress();
    return status;
}

}  // namespace

const Command kConvertCommand = {
    "convert", "[--to NAME] FILE...       converts files",
    "genutil convert [--from NAME] [--to NAME] [-o OUT] [--force] [--guess] FILE...\n"
    "\n"
    "Converts files between encodings (genutil --help lists them) and reports each file's\n"
    "lost characters: how many, and the positions of the first ones. A substitute\n"
    "replaces them. Lines and columns count from 1, bytes from 0.\n"
    "\n"
    "  --from NAME       the encoding of the files; without it, or with auto, it is detected\n"
    "  --to NAME         the encoding to write (utf-8)\n"
    "  -o, --output OUT  the file to write, or the folder for any number of files; without it\n"
    "                    one file is written to standard output\n"
    "  --force           replaces output files that exist\n"
    "  --guess           converts from the likeliest encoding even if it is uncertain\n"
    "\n"
    "Without --from, a file whose encoding is uncertain (below 0.9 in genutil detect) is refused.\n"
    "\"-\" means standard input. An output file is written completely or not at all.\n"
    "\n"
    "Exit status: 0 nothing was lost, 1 characters were lost, 2 wrong usage or a file failed.\n",
    RunConvert};
