// Settings: one value of an ini file of 200 KB beside SimpleIni and GLib's key files, which users
// load for it, and of the registry beside bare SQLite with a prepared statement. "cold" goes
// through so many files that none of them is kept, "warm" reads one that does not change.
#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#ifdef HAVE_GLIB
#include <glib.h>
#endif
#ifdef HAVE_SIMPLEINI
#define SI_CONVERT_ICU
#include <SimpleIni.h>
#endif

#include "osconfig.h"

namespace {

constexpr int kFiles = 24, kSections = 50, kKeys = 100;

std::string FileName(int number) {
    return "./config_bench." + std::to_string(number) + ".ini";
}

// The text in the middle and the one at the end are asked for in turn.
const char* SectionOf(int turn) {
    return turn % 2 ? "section 25" : "section 49";
}

void MakeFiles() {
    std::string text;
    char line[64];
    for (int section = 0; section < kSections; ++section) {
        std::snprintf(line, sizeof line, "[section %d]\n", section);
        text += line;
        for (int key = 0; key < kKeys; ++key) {
            std::snprintf(line, sizeof line, "some key %02d = the value is %010d\n", key,
                          key * 7919);
            text += line;
        }
    }
    for (int i = 0; i < kFiles; ++i) std::ofstream(FileName(i)) << text;
    std::fprintf(stderr, "ini files of %zu bytes\n", text.size());
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
}

void ReadByGenutil(benchmark::State& state, int files) {
    std::vector<CGNString> names;
    for (int i = 0; i < files; ++i) names.emplace_back(FileName(i).c_str());
    const CGNString key("some key 57"), none("none");
    const CGNString sections[] = {SectionOf(0), SectionOf(1)};
    CGNString value;
    int turn = 0;
    for (auto _ : state) {
        ++turn;
        OSGetConfig(value, none, sections[turn % 2], key,
                    names[static_cast<std::size_t>(turn % files)]);
    }
    if (value == "none") state.SkipWithError("not read");
}

void WriteByGenutil(benchmark::State& state) {
    const CGNString name(FileName(kFiles - 1).c_str());
    int number = 0;
    for (auto _ : state) OSSetConfig(++number, "section 25", "some key 57", name);
}

#ifdef HAVE_SIMPLEINI
void ReadBySimpleIni(benchmark::State& state) {
    int turn = 0;
    for (auto _ : state) {
        CSimpleIniA ini;
        ini.LoadFile(FileName(++turn % kFiles).c_str());
        benchmark::DoNotOptimize(ini.GetValue(SectionOf(turn), "some key 57", "none"));
    }
}

void WriteBySimpleIni(benchmark::State& state) {
    int number = 0;
    for (auto _ : state) {
        CSimpleIniA ini;
        ini.LoadFile(FileName(kFiles - 2).c_str());
        ini.SetValue("section 25", "some key 57", std::to_string(++number).c_str());
        ini.SaveFile(FileName(kFiles - 2).c_str());
    }
}
#endif

#ifdef HAVE_GLIB
void ReadByGlib(benchmark::State& state) {
    int turn = 0;
    for (auto _ : state) {
        GKeyFile* file = g_key_file_new();
        g_key_file_load_from_file(file, FileName(++turn % kFiles).c_str(), G_KEY_FILE_NONE,
                                  nullptr);
        g_free(g_key_file_get_value(file, SectionOf(turn), "some key 57", nullptr));
        g_key_file_free(file);
    }
}

void WriteByGlib(benchmark::State& state) {
    int number = 0;
    for (auto _ : state) {
        GKeyFile* file = g_key_file_new();
        const std::string name = FileName(kFiles - 3);
        g_key_file_load_from_file(file, name.c_str(), G_KEY_FILE_KEEP_COMMENTS, nullptr);
        g_key_file_set_value(file, "section 25", "some key 57", std::to_string(++number).c_str());
        g_key_file_save_to_file(file, name.c_str(), nullptr);
        g_key_file_free(file);
    }
}
#endif

constexpr int kValues = 1000;

std::string ValueName(int number) {
    return "Value" + std::to_string(number);
}

void FillRegistry() {
    if (OSSetSystemConfigReg("text", "sub", "ready", "base")) {
        CGNString text;
        if (OSGetSystemConfigReg(text, "", "sub", ValueName(kValues - 1).c_str(), "base")) return;
    }
    for (int i = 0; i < kValues; ++i)
        OSSetSystemConfigReg("C:\\Program Files\\Tour", "sub", ValueName(i).c_str(), "base");
}

void RegistryRead(benchmark::State& state) {
    FillRegistry();
    std::vector<CGNString> names;
    for (int i = 0; i < kValues; ++i) names.emplace_back(ValueName(i).c_str());
    const CGNString none("none"), sub("sub"), base("base");
    CGNString value;
    std::size_t turn = 0;
    for (auto _ : state) OSGetSystemConfigReg(value, none, sub, names[++turn % kValues], base);
    if (value == "none") state.SkipWithError("not read");
}

void RegistryWrite(benchmark::State& state) {
    int number = 0;
    for (auto _ : state) OSSetSystemConfigReg(++number, "sub", "counter", "base");
}

class Bare {
  public:
    explicit Bare(const char* statement) {
        sqlite3_open("config_bench.db", &m_db);
        sqlite3_exec(m_db,
                     "CREATE TABLE IF NOT EXISTS v(key TEXT, name TEXT, data TEXT,"
                     " PRIMARY KEY(key, name)) WITHOUT ROWID",
                     nullptr, nullptr, nullptr);
        sqlite3_exec(m_db, "BEGIN", nullptr, nullptr, nullptr);
        for (int i = 0; i < kValues; ++i)
            sqlite3_exec(m_db,
                         ("INSERT OR IGNORE INTO v VALUES('base\\sub', '" + ValueName(i) +
                          "', 'C:\\Program Files\\Tour')")
                             .c_str(),
                         nullptr, nullptr, nullptr);
        sqlite3_exec(m_db, "COMMIT", nullptr, nullptr, nullptr);
        sqlite3_prepare_v2(m_db, statement, -1, &m_statement, nullptr);
    }
    ~Bare() {
        sqlite3_finalize(m_statement);
        sqlite3_close(m_db);
    }
    sqlite3_stmt* Get() const { return m_statement; }

  private:
    sqlite3* m_db = nullptr;
    sqlite3_stmt* m_statement = nullptr;
};

void BareRead(benchmark::State& state) {
    const Bare bare("SELECT data FROM v WHERE key=?1 AND name=?2");
    std::vector<std::string> names;
    for (int i = 0; i < kValues; ++i) names.push_back(ValueName(i));
    std::size_t turn = 0;
    for (auto _ : state) {
        const std::string& name = names[++turn % kValues];
        sqlite3_bind_text(bare.Get(), 1, "base\\sub", -1, SQLITE_STATIC);
        sqlite3_bind_text(bare.Get(), 2, name.data(), static_cast<int>(name.size()), SQLITE_STATIC);
        if (sqlite3_step(bare.Get()) != SQLITE_ROW) state.SkipWithError("not read");
        const std::string value(reinterpret_cast<const char*>(sqlite3_column_text(bare.Get(), 0)));
        benchmark::DoNotOptimize(value.data());
        sqlite3_reset(bare.Get());
    }
}

void BareWrite(benchmark::State& state) {
    const Bare bare("INSERT OR REPLACE INTO v VALUES('base\\sub', 'counter', ?1)");
    int number = 0;
    for (auto _ : state) {
        const std::string text = std::to_string(++number);
        sqlite3_bind_text(bare.Get(), 1, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
        sqlite3_step(bare.Get());
        sqlite3_reset(bare.Get());
    }
}

template <class Function, class... Arguments>
void Register(const char* name, Function function, Arguments... arguments) {
    benchmark::RegisterBenchmark(name, function, arguments...)->UseRealTime();
}

const int kRegistered = [] {
    setenv("XDG_CONFIG_HOME", "/tmp/config_bench", 1);
    mkdir("/tmp/config_bench", 0700);
    MakeFiles();
    Register("ini read cold/genutil", ReadByGenutil, kFiles);
    Register("ini read warm/genutil", ReadByGenutil, 1);
    Register("ini write/genutil", WriteByGenutil);
#ifdef HAVE_SIMPLEINI
    Register("ini read cold/SimpleIni", ReadBySimpleIni);
    Register("ini write/SimpleIni", WriteBySimpleIni);
#endif
#ifdef HAVE_GLIB
    Register("ini read cold/GLib", ReadByGlib);
    Register("ini write/GLib", WriteByGlib);
#endif
    Register("registry read/genutil", RegistryRead);
    Register("registry read/SQLite", BareRead);
    Register("registry write/genutil", RegistryWrite);
    Register("registry write/SQLite", BareWrite);
    return 0;
}();

}  // namespace
