// The store behind the registry: one table in an SQLite file of the user's, opened when it is first
// needed and kept open.
#pragma once

#include <sqlite3.h>

#include <string_view>

namespace genutil::platform {

enum class StoreQuery { kRead, kList, kWrite, kRemove };

// A run of one of the store's statements. While it lasts no other thread of the process reaches the
// store; other processes are waited for.
class StoreRun {
  public:
    explicit StoreRun(StoreQuery query);
    StoreRun(const StoreRun&) = delete;
    StoreRun& operator=(const StoreRun&) = delete;
    ~StoreRun();

    void Bind(int place, std::string_view text);  // from 1; not copied
    // Whether there is another row. A store that proves to be damaged is set aside under another
    // name, so that the next run finds a new one.
    bool Row();
    std::string_view Text(int column) const;  // from 0, terminated; until the next Row()
    // Whether the statement ran to its end, and how many rows it changed.
    bool IsDone() const { return m_result == SQLITE_DONE; }
    int Changes() const;

  private:
    sqlite3_stmt* m_statement = nullptr;
    int m_result = SQLITE_ERROR;
};

}  // namespace genutil::platform
