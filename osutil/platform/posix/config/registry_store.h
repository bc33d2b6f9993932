// The store of the registry: one table in the user's SQLite file, opened on first use and kept
// open.
#pragma once

#include <sqlite3.h>

#include <string_view>

namespace genutil::platform {

enum class StoreQuery { kRead, kList, kWrite, kRemove };

// An execution of one of the store's statements. During it, other threads of the process cannot
// access the store, and other processes are waited for.
class StoreRun {
  public:
    explicit StoreRun(StoreQuery query);
    StoreRun(const StoreRun&) = delete;
    StoreRun& operator=(const StoreRun&) = delete;
    ~StoreRun();

    void Bind(int place, std::string_view text);  // places count from 1; the text is not copied
    // Advances to the next row. Returns false if there is none. If the store is found to be
    // damaged, it is renamed, so that the next execution creates a new one.
    bool Row();
    std::string_view Text(int column) const;  // columns count from 0; terminated and valid until
                                              // the next Row()
    // Return true if the statement completed, and the number of rows that it changed.
    bool IsDone() const { return m_result == SQLITE_DONE; }
    int Changes() const;

  private:
    sqlite3_stmt* m_statement = nullptr;
    int m_result = SQLITE_ERROR;
};

}  // namespace genutil::platform
