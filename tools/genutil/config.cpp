// genutil config: reads and writes settings in ini files and in the registry.
#include <cstdio>

#include "osconfig.h"
#include "osfile.h"
#include "ospreferences.h"
#include "tools/genutil/command.h"
#include "tools/genutil/system.h"

namespace {

std::string TextOf(const char* text) {
    return TextOfArgument(text);
}

constexpr char kNoValue[] = "\1none";  // a default that occurs in no file

// A place for settings: a section of a file, or a key of the registry.
class Place {
  public:
    Place(bool registry, const std::string& where, const std::string& below)
        : m_registry(registry), m_name(where + ", " + below), m_below(below.c_str()) {
        // The library would look for a bare name in a system directory.
        const bool bare = !registry && where.find_first_of("/\\:") == std::string::npos;
        m_where = (bare ? "./" + where : where).c_str();
    }

    bool Get(const CGNString& key, CGNString& value) const {
        if (m_registry) return OSGetSystemConfigReg(value, kNoValue, m_below, key, m_where) != 0;
        OSGetConfig(value, kNoValue, m_below, key, m_where);
        return value != kNoValue;
    }
    void Set(const CGNString& key, const CGNString& value) const {
        if (m_registry)
            OSSetSystemConfigReg(value, m_below, key, m_where);
        else
            OSSetConfig(value, m_below, key, m_where);
    }
    // Returns false if that is certain to have failed.
    bool Delete(const CGNString& key) const {
        if (m_registry) return OSDelSystemConfigReg(m_below, key, m_where) != 0;
        OSDeleteKeyConfig(m_below, key, m_where);
        return true;
    }
    bool IsRegistry() const { return m_registry; }
    bool List() const {
        if (m_registry) return ListRegistry();
        CGNString lines(kNoValue);
        OSLocalPreferenceSet preferences;
        preferences.GetPreferenceSectionValueFromIni(m_below, lines, m_where);
        if (lines == kNoValue) return false;
        std::string text = TextOf(lines);
        if (!text.empty() && text.back() != '\n') text += '\n';
        std::fputs(text.c_str(), stdout);
        return true;
    }
    // Returns the size of the file in bytes, which shows whether a line was removed.
    long long Size() const {
        struct _stat status;
        return !m_registry && OSFileStat(m_where, status) == 0 ? status.st_size : 0;
    }
    const std::string& Name() const { return m_name; }

  private:
    bool ListRegistry() const {
        CGNStringList names, values;
        OSGetSystemConfigReg(m_below, names, values, m_where);
        for (long i = 0; i < names.GetCount(); ++i)
            std::printf("%s=%s\n", TextOf(*names.GetItem(i)).c_str(),
                        TextOf(*values.GetItem(i)).c_str());
        return names.GetCount() > 0;
    }

    bool m_registry;
    std::string m_name;
    CGNString m_where, m_below;
};

Status Tell(const std::string& message) {
    Complain(message);
    return kLoss;
}

constexpr std::size_t kLongest = 1023;  // bytes of a text that is read

Status TellAbsent(const Place& place, const std::string& key) {
    const char* also = place.IsRegistry() ? ", or one of more than 1023 bytes" : "";
    return Tell(place.Name() + ": no value '" + key + "'" + also);
}

Status Get(const Place& place, const std::string& key) {
    CGNString value;
    if (!place.Get(key.c_str(), value)) return TellAbsent(place, key);
    std::puts(TextOf(value).c_str());
    return kOk;
}

Status Set(const Place& place, const std::string& key, const std::string& value) {
    if (value.size() > kLongest)
        return Complain(place.Name() + ": the value has " + std::to_string(value.size()) +
                        " bytes; at most 1023 can be read back");
    CGNString before, after;
    place.Get(key.c_str(), before);
    place.Set(key.c_str(), value.c_str());
    const bool stored = place.Get(key.c_str(), after);
    if (stored && after == value.c_str()) return kOk;
    if (!stored || after == before)
        return Complain(place.Name() + ": '" + key + "' cannot be written");
    return Tell(place.Name() + ": '" + key + "' is read back as '" + TextOf(after) + "'");
}

Status Delete(const Place& place, const std::string& key) {
    CGNString value;
    if (place.IsRegistry()) return place.Delete(key.c_str()) ? kOk : TellAbsent(place, key);
    if (!place.Get(key.c_str(), value)) return TellAbsent(place, key);
    const long long size = place.Size();
    place.Delete(key.c_str());
    // Another line may have the same key. Its value is then found.
    CGNString next;
    if (place.Get(key.c_str(), next) && next == value && place.Size() == size)
        return Complain(place.Name() + ": '" + key + "' cannot be deleted");
    return kOk;
}

Status RunConfig(const Arguments& arguments) {
    bool registry = false;
    Arguments words;
    if (!ParseArguments(arguments, {{"--registry", nullptr, nullptr, &registry}}, &words))
        return kError;
    static const struct {
        const char* name;
        std::size_t words;
    } kActions[] = {{"get", 4}, {"set", 5}, {"delete", 4}, {"list", 3}};
    const std::string action = words.empty() ? "" : words[0];
    std::size_t wanted = 0;
    for (const auto& row : kActions)
        if (action == row.name) wanted = row.words;
    if (wanted == 0) return Complain("config: give get, set, delete or list");
    if (words.size() != wanted)
        return Complain(
            "config " + action + ": give " + (registry ? "BASE SUBKEY" : "FILE SECTION") +
            (wanted > 3 ? registry ? " NAME" : " KEY" : "") + (wanted > 4 ? " VALUE" : ""));
    UseCodeSetOfArguments();
    const Place place(registry, words[1], words[2]);
    if (!registry && action != "set" && KindOf(words[1]) != FileKind::kFile)
        return Complain(words[1] + ": no such file");
    if (action == "get") return Get(place, words[3]);
    if (action == "set") return Set(place, words[3], words[4]);
    if (action == "delete") return Delete(place, words[3]);
    return place.List() ? kOk : Tell(place.Name() + ": nothing there");
}

}  // namespace

const Command kConfigCommand = {
    "config", "get|set|delete|list ...   reads and writes settings in ini files and the registry",
    "genutil config get FILE SECTION KEY\n"
    "genutil config set FILE SECTION KEY VALUE\n"
    "genutil config delete FILE SECTION KEY\n"
    "genutil config list FILE SECTION\n"
    "genutil config get|set|delete|list --registry BASE SUBKEY [NAME [VALUE]]\n"
    "\n"
    "Reads and writes one setting of an ini file. Every other line is unchanged. list shows the\n"
    "lines of a section. Names are found in any letter case, but list needs the section in its\n"
    "own letter case. With --registry, uses a value of the current user's registry below\n"
    "the key BASE\\SUBKEY; SUBKEY may be \"\".\n"
    "\n"
    "  genutil config set app.ini Screen Width 80\n"
    "  genutil config get app.ini screen width            80\n"
    "  genutil config set --registry Software\\\\Tour Screen Width 80\n"
    "\n"
    "Exit status: 0 success, 1 there is no such setting, or it is read back differently, 2\n"
    "wrong usage or a file that cannot be read or written.\n",
    RunConfig};
