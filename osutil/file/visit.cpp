// Visits of the files of a directory and those below it.
#include "osfile.h"
#include "osutil/file/matching_entries.h"
#include "osutil/file/path.h"

using genutil::JoinPath;
using genutil::MatchingEntries;
using genutil::platform::Directory;
using genutil::platform::IsDots;

namespace {

class Visit {
  public:
    Visit(OSFileVisitor visitor, void* context, bool recurse)
        : m_visitor(visitor), m_context(context), m_recurse(recurse) {}

    // Visits the entries of a directory, and then those of its subdirectories. Directories are
    // closed before others are opened, because trees may be deep.
    void Walk(CGNString const& path, const char* pattern) {
        CGNStringList folders(10, 10);
        VisitEntries(path, pattern);
        if (!m_recurse || m_result == osVisitStopped) return;
        CollectFolders(path, &folders);
        for (int i = 0; i < folders.GetCount() && m_result != osVisitStopped; ++i)
            Walk(*folders.GetItem(i), pattern);
    }
    int Result() const { return m_result; }

  private:
    static constexpr osFileKind KindOf(Directory::Kind kind) {
        switch (kind) {
            case Directory::Kind::kFile:
                return osKindFile;
            case Directory::Kind::kDirectory:
                return osKindDirectory;
            case Directory::Kind::kLink:
                return osKindLink;
            case Directory::Kind::kOther:
                break;
        }
        return osKindOther;
    }

    void Call(const OSFileEntry& entry) {
        if (!m_visitor(m_context, entry)) m_result = osVisitStopped;
    }

    void ReportUnread(CGNString const& path) {
        if (m_result == 0) m_result = osFileFailed;
        if (m_result != osVisitStopped) Call({path, "", osKindUnreadable, 0, 0});
    }

    [[gnu::noinline]] void VisitEntries(CGNString const& path, const char* pattern) {
        MatchingEntries matches(path, pattern);
        CGNString entryPath;
        while (m_result != osVisitStopped && matches.Next()) {
            const Directory& entry = matches.Entry();
            Directory::Status status;
            if (IsDots(entry.Name()) || !entry.ReadStatus(&status)) continue;
            if (!JoinPath(entryPath, path, entry.Name())) return ReportUnread(path);
            Call({entryPath, entry.Name(), KindOf(status.kind), status.size, status.modified});
        }
        if (m_result != osVisitStopped && (!matches.IsOpen() || matches.HasFailed()))
            ReportUnread(path);
    }

    // A link may lead back to a parent directory.
    [[gnu::noinline]] void CollectFolders(CGNString const& path, CGNStringList* folders) {
        MatchingEntries all(path, "*");
        CGNString below;
        bool good = true;
        while (good && all.Next()) {
            const Directory& entry = all.Entry();
            if (IsDots(entry.Name()) || entry.IsLink() || !entry.IsDirectory()) continue;
            const int count = folders->GetCount();
            good = JoinPath(below, path, entry.Name()) && folders->AddItem(below) &&
                   folders->GetItem(count) && *folders->GetItem(count) == below;
        }
        // The visit of its entries has reported a directory that cannot be read.
        if (!good) ReportUnread(path);
    }

    OSFileVisitor m_visitor;
    void* m_context;
    bool m_recurse;
    int m_result = 0;
};

}  // namespace

int OSVisitFiles(CGNString const& path, CGNString const& pattern, OSFileVisitor visitor,
                 void* context, unsigned char recurse) {
    if (!visitor) return osFileFailed;
    Visit visit(visitor, context, recurse != 0);
    visit.Walk(path, pattern);
    return visit.Result();
}
