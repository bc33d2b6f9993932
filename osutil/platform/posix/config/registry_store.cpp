#include "osutil/platform/posix/config/registry_store.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <mutex>
#include <new>
#include <thread>

#include "osutil/platform/posix/config/config_home.h"
#include "osutil/platform/posix/file/descriptor.h"
#include "osutil/platform/posix/file/file_lock.h"
#include "osutil/platform/posix/file/file_state.h"

namespace genutil::platform {

namespace {

// Values have no types here, since they are read as text. A key has no record besides its values,
// since a key without values is equivalent to a missing one.
constexpr char kSchema[] =
    "CREATE TABLE IF NOT EXISTS entry(key TEXT NOT NULL, name TEXT NOT NULL, shown TEXT NOT NULL,"
    " data TEXT NOT NULL, PRIMARY KEY(key, name)) WITHOUT ROWID";

constexpr const char* kStatements[] = {
    "SELECT data FROM entry WHERE key=?1 AND name=?2",
    "SELECT shown, data FROM entry WHERE key=?1 ORDER BY name",
    ("INSERT INTO entry(key, name, shown, data) VALUES(?1, ?2, ?3, ?4)"
     " ON CONFLICT(key, name) DO UPDATE SET data=excluded.data"),
    "DELETE FROM entry WHERE key=?1 AND name=?2",
};
constexpr unsigned kStatementCount = sizeof kStatements / sizeof *kStatements;

// The time for which a reader may continue to use a file that has been replaced.
constexpr std::int64_t kCheckAfter = 500'000'000;  // in nanoseconds

std::int64_t Now() {
    timespec now;
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return FileState::Nanoseconds(now);
}

struct Store {
    sqlite3* connection;
    sqlite3_stmt* statements[kStatementCount];
    dev_t device;
    ino_t inode;
    std::int64_t checked;  // in nanoseconds
    char path[PATH_MAX];

    bool Open(const char* file, bool forWriting);
    sqlite3_stmt* Statement(StoreQuery query);
    void Close();
    void SetAside();
    bool IsFile(const struct stat& status) const {
        return status.st_dev == device && status.st_ino == inode;
    }
};

// Never destroyed, because other threads may still use it while the process ends.
std::mutex g_mutex;
// Held while the store's library works, but not while it waits for another process.
std::mutex g_working;
constinit Store g_store = {};
// In a forked process: keeps the parent's connection reachable, so that it is no leak.
constinit sqlite3* volatile g_parents = nullptr;

// A forked process must not use the parent's connection, not even to close it. The store's library
// does not work during the fork, because its own locks would stay taken in the child. The other
// mutex may belong to a thread that the child does not have.
void BeforeFork() {
    g_working.lock();
}
void AfterForkInParent() {
    g_working.unlock();
}
void AfterForkInChild() {
    if (g_store.connection) g_parents = g_store.connection;
    g_store = {};
    g_working.unlock();
    new (&g_mutex) std::mutex;
}

// Called with g_working while another process has the store. Returns 1 to try again.
int WaitForOthers(void*, int tries) {
    constexpr int kPatience = 10000, kFirst = 50;  // milliseconds, of which the first pauses have 1
    if (tries >= kFirst + (kPatience - kFirst) / 10) return 0;
    g_working.unlock();
    std::this_thread::sleep_for(std::chrono::milliseconds(tries < kFirst ? 1 : 10));
    g_working.lock();
    return 1;
}

void CloseAtExit() {
    const std::scoped_lock lock(g_mutex, g_working);
    g_store.Close();
}

void PrepareOnce() {
    static constinit bool s_done = false;
    if (s_done) return;
    s_done = pthread_atfork(BeforeFork, AfterForkInParent, AfterForkInChild) == 0 &&
             std::atexit(CloseAtExit) == 0;
}

// Creates an empty file for the user only, unless there is a file.
void MakeFile(const char* path) {
    if (!MakeFolderOf(path)) return;
    const OpenDescriptor file(open(path, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
}

bool Store::Open(const char* file, bool forWriting) {
    const std::int64_t now = Now();
    if (connection && !forWriting && now - checked < kCheckAfter && std::strcmp(file, path) == 0)
        return true;
    struct stat status;
    bool exists = stat(file, &status) == 0;
    checked = now;
    if (connection && (!exists || !IsFile(status) || std::strcmp(file, path) != 0)) Close();
    if (connection) return true;
    if (!exists && forWriting) {
        MakeFile(file);
        exists = stat(file, &status) == 0;
    }
    const std::size_t length = std::strlen(file);
    if (!exists || length >= sizeof path) return false;
    PrepareOnce();
    std::memcpy(path, file, length + 1);
    device = status.st_dev;
    inode = status.st_ino;
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
    if (sqlite3_open_v2(file, &connection, flags, nullptr) != SQLITE_OK) {
        Close();
        return false;
    }
    sqlite3_busy_handler(connection, WaitForOthers, nullptr);
    return true;
}

sqlite3_stmt* Store::Statement(StoreQuery query) {
    sqlite3_stmt*& statement = statements[static_cast<unsigned>(query)];
    if (statement) return statement;
    int result = SQLITE_OK;
    if (query == StoreQuery::kWrite)
        result = sqlite3_exec(connection, kSchema, nullptr, nullptr, nullptr);
    if (result == SQLITE_OK)
        result = sqlite3_prepare_v3(connection, kStatements[static_cast<unsigned>(query)], -1,
                                    SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    if (result == SQLITE_CORRUPT || result == SQLITE_NOTADB) SetAside();
    return result == SQLITE_OK ? statement : nullptr;
}

void Store::Close() {
    for (sqlite3_stmt*& statement : statements) {
        sqlite3_finalize(statement);
        statement = nullptr;
    }
    sqlite3_close(connection);
    connection = nullptr;
}

// If several processes find the damage, one of them renames the file, and none renames its
// replacement. The journal belongs to the file and is renamed with it.
void Store::SetAside() {
    static constexpr const char* kKinds[] = {"", "-journal"};
    Close();
    const OpenDescriptor file(open(path, O_RDWR | O_CLOEXEC));
    if (!file.IsOpen()) return;
    const FileLock lock(file.Get());
    if (!lock.IsTaken()) return;
    struct stat status;
    char aside[2][PATH_MAX + 32];
    for (int number = 1; stat(path, &status) == 0 && IsFile(status); ++number) {
        char journal[PATH_MAX + 16];
        std::snprintf(journal, sizeof journal, "%s%s", path, kKinds[1]);
        for (int i = 0; i < 2; ++i)
            std::snprintf(aside[i], sizeof aside[i], "%s.damaged-%d%s", path, number, kKinds[i]);
        if (access(aside[0], F_OK) == 0 || access(aside[1], F_OK) == 0) continue;
        std::rename(journal, aside[1]);
        std::rename(path, aside[0]);
        break;
    }
}

}  // namespace

StoreRun::StoreRun(StoreQuery query) {
    g_mutex.lock();
    g_working.lock();
    const ConfigPath path("registry.db");
    if (path.Get() && g_store.Open(path.Get(), query == StoreQuery::kWrite))
        m_statement = g_store.Statement(query);
}

StoreRun::~StoreRun() {
    if (m_statement) sqlite3_reset(m_statement);
    g_working.unlock();
    g_mutex.unlock();
}

void StoreRun::Bind(int place, std::string_view text) {
    if (m_statement)
        sqlite3_bind_text64(m_statement, place, text.data(), text.size(), SQLITE_STATIC,
                            SQLITE_UTF8);
}

bool StoreRun::Row() {
    if (!m_statement) return false;
    m_result = sqlite3_step(m_statement);
    const int kind = m_result & 0xFF;
    if (kind == SQLITE_CORRUPT || kind == SQLITE_NOTADB) {
        m_statement = nullptr;  // released with the connection
        g_store.SetAside();
    }
    return m_result == SQLITE_ROW;
}

std::string_view StoreRun::Text(int column) const {
    const unsigned char* text = sqlite3_column_text(m_statement, column);
    return text ? reinterpret_cast<const char*>(text) : "";
}

int StoreRun::Changes() const {
    return m_statement ? sqlite3_changes(g_store.connection) : 0;
}

}  // namespace genutil::platform
