// SimpleIni and GLib's key files, which load a whole file for one value, and plain SQLite with a
// prepared statement.
#include "bench/config_bench.h"

#include <sqlite3.h>
#include <sys/stat.h>

#include <cstdlib>
#include <vector>

#ifdef HAVE_GLIB
#include <glib.h>
#endif
#ifdef HAVE_SIMPLEINI
#define SI_CONVERT_ICU
#include <SimpleIni.h>
#endif

namespace {

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

}  // namespace

void PrepareRegistry() {
    setenv("XDG_CONFIG_HOME", "/tmp/config_bench", 1);
    mkdir("/tmp/config_bench", 0700);
}

void RegisterPeers() {
#ifdef HAVE_SIMPLEINI
    Register("ini read cold/SimpleIni", ReadBySimpleIni);
    Register("ini write/SimpleIni", WriteBySimpleIni);
#endif
#ifdef HAVE_GLIB
    Register("ini read cold/GLib", ReadByGlib);
    Register("ini write/GLib", WriteByGlib);
#endif
    Register("registry read/SQLite", BareRead);
    Register("registry write/SQLite", BareWrite);
}
