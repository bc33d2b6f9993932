// genutil convert: converts files between encodings and reports losses.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <system_error>
#include <vector>

#include "mbutil.h"
#include "tools/genutil/characters.h"
#include "tools/genutil/command.h"
#include "tools/genutil/output_file.h"
#include "tools/genutil/system.h"

namespace {

constexpr std::size_t kListed = 5;

struct Job {
    std::string from, to, out, escape;
    bool force = false, inPlace = false, recursive = false, bestFit = false, mark = false;
    bool guess = false;
    bool outIsFolder = false;
    std::vector<std::string> files;
    std::map<std::string, std::string> inFolder;  // of files that a folder led to: their path in it
    Encoding target{};
    unsigned flags = 0;
};

std::string OutputPath(const Job& job, const std::string& file) {
    if (job.inPlace) return file;
    if (!job.outIsFolder) return job.out;
    const char last = job.out.back();
    const std::string folder = job.out + (last == '/' || last == '\\' ? "" : "/");
    if (const auto known = job.inFolder.find(file); known != job.inFolder.end())
        return folder + known->second;
    const std::size_t slash = file.find_last_of("/\\");
    return folder + (slash == std::string::npos ? file : file.substr(slash + 1));
}

// Replaces each folder with the files in it, in order of their names. Links to folders and
// unfinished output are left out. Returns false after a message.
bool ExpandFolders(Job* job) {
    namespace fs = std::filesystem;
    std::vector<std::string> files;
    for (const std::string& file : job->files) {
        if (KindOf(file) != FileKind::kFolder) {
            files.push_back(file);
            continue;
        }
        std::vector<std::string> found;
        std::error_code error;
        for (fs::recursive_directory_iterator at(PathOf(file), error), end; !error && at != end;
             at.increment(error)) {
            std::error_code unknown;  // of a link without end, which is no file
            if (!at->is_regular_file(unknown) || at->path().extension() == ".part") continue;
            found.push_back(ArgumentOf(at->path()));
            job->inFolder[found.back()] = ArgumentOf(at->path().lexically_relative(PathOf(file)));
        }
        if (error) {
            Complain(file + ": cannot be read: " + error.message());
            return false;
        }
        std::sort(found.begin(), found.end());
        files.insert(files.end(), found.begin(), found.end());
    }
    job->files = files;
    return true;
}

// Leaves out other names of a file, which would be converted twice.
void DropOtherNames(std::vector<std::string>* files) {
    std::set<std::string> known;
    std::erase_if(*files, [&](const std::string& file) {
        const std::string identity = IdentityOf(file);
        return !identity.empty() && !known.insert(identity).second;
    });
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

// Converts a text in blocks. Returns false after a message.
bool ConvertBlocks(const Input& input, const Job& job, mbConversion* conversion,
                   std::string* result) {
    constexpr std::size_t kBlock = 1 << 20;
    const std::unique_ptr<mbConverter, void (*)(mbConverter*)> converter(
        mbOpenConverter(input.encoding.codeSet, job.target.codeSet, job.flags), mbCloseConverter);
    const char* src = input.text.data() + input.markLength;  // a mark is not text
    std::size_t left = input.text.size() - input.markLength;
    const std::size_t all = left;
    std::vector<char> block(converter ? kBlock : 0);
    int state = converter ? mbNextFull : mbNextFailed;
    for (std::size_t shown = 0; state == mbNextFull;) {
        char* dst = block.data();
        std::size_t room = block.size();
        state = mbConvertNext(converter.get(), &src, &left, &dst, &room, 1, conversion);
        result->append(block.data(), dst);
        if (all - left < shown + kLargeFile) continue;
        shown = all - left;
        ShowProgress(input.name, "converting " + std::to_string(shown >> 20) + " of " +
                                     std::to_string(all >> 20) + " MB of ");
    }
    if (state == mbNextDone) return true;
    Complain(input.name + ": cannot be converted from " + NameOf(input.encoding) + " to " +
             NameOf(job.target));
    return false;
}

Status ConvertText(const Input& input, const Job& job, std::string* result) {
    std::size_t lostAt[kListed];
    mbConversion conversion = {};
    conversion.lostAt = lostAt;
    conversion.lostAtSize = kListed;
    if (!ConvertBlocks(input, job, &conversion, result)) return kError;
    if (job.target.bigEndian) SwapUnits(result);
    if (conversion.lost == 0) return kOk;
    for (std::size_t i = 0; i < conversion.lost && i < kListed; ++i) lostAt[i] += input.markLength;
    ReportLosses(input, job, conversion);
    return kLoss;
}

bool WriteResult(const Job& job, const std::string& path, const std::string& result) {
    if (job.inPlace) return RewriteFile(path, result);
    if (!job.inFolder.empty()) {
        std::error_code error;
        std::filesystem::create_directories(PathOf(path).parent_path(), error);
    }
    return WriteFile(path, result);
}

Status ConvertFile(const Job& job, const std::string& file) {
    const std::string path = job.out.empty() && !job.inPlace ? "" : OutputPath(job, file);
    if (!path.empty() && !job.inPlace && !MayWrite(path, job.force)) return kError;
    Input input;
    if (!ReadInput(file, job.from, job.guess, &input)) return kError;
    std::string result;
    if (input.text.size() >= kLargeFile) ShowProgress(input.name, "converting ");
    const Status status = ConvertText(input, job, &result);
    if (status == kError) return kError;
    if (job.inPlace && status == kLoss && !job.force)
        return Complain(file +
                        ": is unchanged, because characters would be lost; --force loses them");
    if (job.inPlace && result == input.text && !input.encoding.bigEndian) return status;
    if (result.size() >= kLargeFile && !path.empty()) ShowProgress(path, "writing ");
    if (path.empty()) ClearProgress();
    if (!path.empty()) return WriteResult(job, path, result) ? status : kError;
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
    if (!job->escape.empty() && job->escape != "unicode" && job->escape != "html")
        return fail("convert: --escape is unicode or html");
    const auto flag = [&](bool set, unsigned bit) { job->flags |= set ? bit : 0; };
    flag(job->bestFit, mbConvertBestFit);
    flag(job->escape == "unicode", mbConvertUnicodeEscapes);
    flag(job->escape == "html", mbConvertHtmlEscapes);
    flag(job->mark || job->target.marked, mbConvertMark);
    if (job->inPlace && !job->out.empty()) return fail("convert: --in-place excludes -o");
    if (job->recursive && !job->inPlace && job->out.empty())
        return fail("convert: -r needs --in-place or an output folder: -o FOLDER");
    if (job->recursive && !ExpandFolders(job)) return false;
    job->outIsFolder = !job->out.empty() && KindOf(job->out) == FileKind::kFolder;
    if (job->inPlace) {
        if (std::find(job->files.begin(), job->files.end(), "-") != job->files.end())
            return fail("convert: standard input cannot be converted in place");
        DropOtherNames(&job->files);
        return true;
    }
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
                                         {"--in-place", "-i", nullptr, &job.inPlace},
                                         {"--recursive", "-r", nullptr, &job.recursive},
                                         {"--best-fit", nullptr, nullptr, &job.bestFit},
                                         {"--escape", nullptr, &job.escape, nullptr},
                                         {"--mark", nullptr, nullptr, &job.mark},
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
    "genutil convert [--from NAME] [--to NAME] [-o OUT | --in-place] [OPTION...] FILE...\n"
    "\n"
    "Converts files between encodings (genutil --help lists them) and reports each file's\n"
    "lost characters: how many, and the positions of the first ones. A substitute\n"
    "replaces them. Lines and columns count from 1, bytes from 0.\n"
    "\n"
    "  --from NAME       the encoding of the files; without it, or with auto, it is detected\n"
    "  --to NAME         the encoding to write (utf-8)\n"
    "  -o, --output OUT  the file to write, or the folder for any number of files; without it\n"
    "                    one file is written to standard output\n"
    "  -i, --in-place    replaces the contents of the files, which keep their owner, rights and\n"
    "                    links; a file that would lose characters is left as it is; a file with\n"
    "                    several names is converted once\n"
    "  -r, --recursive   converts all files in the folders that are named\n"
    "  --best-fit        writes a lost letter as a similar one of ASCII, if there is one\n"
    "  --escape KIND     writes lost characters as \\uXXXX (unicode) or &#NNNN; (html)\n"
    "  --mark            begins text in Unicode with a byte-order mark\n"
    "  --force           replaces output files that exist, and loses characters in place\n"
    "  --guess           converts from the likeliest encoding even if it is uncertain\n"
    "\n"
    "Without --from, a file whose encoding is uncertain (below 0.9 in genutil detect) is refused.\n"
    "\"-\" means standard input. An output file is written completely or not at all.\n"
    "\n"
    "Exit status: 0 nothing was lost, 1 characters were lost, 2 wrong usage or a file failed.\n",
    RunConvert};
