// Files of settings with several processes, permissions and damage.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>

#include "osconfig.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/temporary_file.h"

namespace {

namespace fs = std::filesystem;

// A folder of its own, which also takes the place of the user's configuration.
class Folder : public testing::Test {
  protected:
    void SetUp() override {
        // In memory, where thousands of writes do not wait for a disk.
        m_folder = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
        m_folder += "/config_store.XXXXXX";
        ASSERT_TRUE(mkdtemp(m_folder.data()));
        if (const char* home = getenv("XDG_CONFIG_HOME")) m_home = home;
        setenv("XDG_CONFIG_HOME", m_folder.c_str(), 1);
    }
    void TearDown() override {
        if (m_home.empty())
            unsetenv("XDG_CONFIG_HOME");
        else
            setenv("XDG_CONFIG_HOME", m_home.c_str(), 1);
        fs::remove_all(m_folder);
    }
    std::string Path(const std::string& name) const { return m_folder + "/" + name; }
    std::string Store() const { return Path("genutil/registry.db"); }

    std::string m_folder, m_home;
};
using ConfigFiles = Folder;
using RegistryStore = Folder;

void Write(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

pid_t Start(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    return child;
}

std::string Key(int writer, int number) {
    char key[32];
    std::snprintf(key, sizeof key, "w%d-%d", writer, number);
    return key;
}

// Two processes store so many values of their own each; how many are lost or cannot be stored.
template <class Store, class Load>
int LostByTwoWriters(int values, Store store, Load load) {
    pid_t children[2];
    for (int writer = 0; writer < 2; ++writer)
        children[writer] = Start([&] {
            for (int i = 0; i < values; ++i)
                if (!store(Key(writer, i).c_str(), std::to_string(i))) _exit(1);
        });
    int lost = 0;
    for (int writer = 0; writer < 2; ++writer) {
        int status = -1;
        waitpid(children[writer], &status, 0);
        lost += status != 0;
    }
    for (int writer = 0; writer < 2; ++writer)
        for (int i = 0; i < values; ++i) lost += load(Key(writer, i).c_str()) != std::to_string(i);
    return lost;
}

void Set(const std::string& path, const char* key, const std::string& value) {
    OSSetConfig(value.c_str(), "s", key, path.c_str());
}

std::string Get(const std::string& path, const char* key) {
    CGNString value;
    OSGetConfig(value, "none", "s", key, path.c_str());
    return std::string(value);
}

TEST_F(ConfigFiles, TwoProcessesLoseNoKeys) {
    const std::string path = Path("a.ini");
    const auto store = [&](const char* key, const std::string& value) {
        Set(path, key, value);
        return true;
    };
    EXPECT_EQ(LostByTwoWriters(1000, store, [&](const char* key) { return Get(path, key); }), 0);
}

TEST_F(ConfigFiles, KilledWriterLeavesAWholeFile) {
    const std::string path = Path("a.ini"), tail = "\n[rest]\n" + std::string(100000, 'r') + "\n";
    for (int round = 0; round < 30; ++round) {
        Write(path, "[s]\nk=start" + tail);
        const pid_t child = Start([&] {
            for (int i = 0;; ++i) Set(path, "k", i % 2 ? "odd" : "even");
        });
        std::this_thread::sleep_for(std::chrono::microseconds(3000 + 377 * round));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const std::string text = BytesOf(path), value = Get(path, "k");
        EXPECT_TRUE(value == "start" || value == "odd" || value == "even") << value;
        EXPECT_EQ(text, "[s]\nk=" + value + tail);
    }
    Set(path, "k", "end");
    EXPECT_EQ(std::distance(fs::directory_iterator(m_folder), {}), 1);  // no temporary file
}

TEST_F(ConfigFiles, KeepPermissionsAndLinks) {
    const std::string path = Path("a.ini"), link = Path("link.ini");
    Write(path, "[s]\nk=1\n");
    chmod(path.c_str(), 0640);
    fs::create_symlink("a.ini", link);
    fs::create_symlink("made.ini", Path("dangling.ini"));
    Set(link, "k", "2");
    Set(Path("dangling.ini"), "k", "3");
    EXPECT_EQ(BytesOf(path), "[s]\nk=2\n");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(BytesOf(Path("made.ini")), "[s]\nk=3\n");
    struct stat status;
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
}

// An access list: the owner and user 12345 may write, the group may read.
std::string AccessList() {
    const struct {
        std::uint16_t tag, permissions;
        std::uint32_t id;
    } entries[] = {{1, 6, ~0u}, {2, 6, 12345}, {4, 4, ~0u}, {16, 6, ~0u}, {32, 0, ~0u}};
    return std::string("\2\0\0\0", 4) +
           std::string(reinterpret_cast<const char*>(entries), sizeof entries);
}

std::string Attribute(const std::string& path, const char* name) {
    char value[256];
    const ssize_t size = getxattr(path.c_str(), name, value, sizeof value);
    return size < 0 ? std::string("none") : std::string(value, static_cast<std::size_t>(size));
}

TEST_F(ConfigFiles, KeepAccessListsAndAttributes) {
    const std::string path = Path("a.ini"), plain = Path("plain.ini"), list = AccessList();
    Write(path, "[s]\nk=1\n");
    chmod(path.c_str(), 0640);
    constexpr char kList[] = "system.posix_acl_access", kDefault[] = "system.posix_acl_default";
    if (setxattr(path.c_str(), kList, list.data(), list.size(), 0) != 0)
        GTEST_SKIP() << "the file system has no access lists: " << std::strerror(errno);
    setxattr(path.c_str(), "user.origin", "here", 4, 0);  // not on every file system
    const std::string attribute = Attribute(path, "user.origin");
    Write(plain, "[s]\nk=1\n");
    chmod(plain.c_str(), 0640);
    // A new file in the folder gets this list, which would widen the rights to the plain file.
    ASSERT_EQ(setxattr(m_folder.c_str(), kDefault, list.data(), list.size(), 0), 0);
    for (const std::string& file : {path, plain}) {
        Set(file, "k", "2");
        EXPECT_EQ(BytesOf(file), "[s]\nk=2\n");
    }
    EXPECT_EQ(Attribute(path, kList), list);
    EXPECT_EQ(Attribute(path, "user.origin"), attribute);
    EXPECT_EQ(Attribute(plain, kList), "none");
    struct stat status;
    ASSERT_EQ(stat(plain.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
}

TEST_F(ConfigFiles, AreWrittenInPlaceIfNoNewFileCanReplaceThem) {
    const std::string path = Path("a.ini"), link = Path("link.ini");
    const auto inode = [&] {
        struct stat status = {};
        stat(path.c_str(), &status);
        return status.st_ino;
    };
    Write(path, "[s]\nk=1\nj=2\n");
    const auto expectInPlace = [&](const std::string& value) {
        const ino_t before = inode();
        Set(path, "k", value);
        EXPECT_EQ(BytesOf(path), "[s]\nk=" + value + "\nj=2\n");
        EXPECT_EQ(inode(), before);
    };
    fs::create_hard_link(path, link);
    expectInPlace("longer");
    expectInPlace("s");
    EXPECT_EQ(BytesOf(link), BytesOf(path));
    fs::remove(link);
    // The name of the new file is taken by what cannot be removed.
    const std::string taken = Path(".genutil-new-" + std::to_string(geteuid()) + "~");
    fs::create_directory(taken);
    expectInPlace("2");
    // A file that a killed process left is removed, not filled: it may have other names.
    fs::remove(taken);
    Write(link, "other");
    fs::create_hard_link(link, taken);
    Set(path, "k", "3");
    EXPECT_EQ(Get(path, "k"), "3");
    EXPECT_EQ(BytesOf(link), "other");
    EXPECT_FALSE(fs::exists(taken));
}

TEST_F(ConfigFiles, IgnoreLocksOfThePrograms) {
    const std::string path = Path("a.ini");
    Write(path, "[s]\nk=1\n");
    const int folder = open(m_folder.c_str(), O_RDONLY | O_DIRECTORY);
    const int file = open(path.c_str(), O_RDWR);
    EXPECT_EQ(flock(folder, LOCK_EX), 0);
    EXPECT_EQ(flock(file, LOCK_EX), 0);
    Set(path, "k", "2");
    Set(Path("new.ini"), "k", "3");
    EXPECT_EQ(Get(path, "k"), "2");
    EXPECT_EQ(Get(Path("new.ini"), "k"), "3");
    close(file);
    close(folder);
}

TEST_F(ConfigFiles, ReadsOtherForms) {
    const CodeSetGuard guard(mbShiftJis);
    const std::string path = Path("a.ini");
    const auto expectRead = [&](const std::string& text, const char* value) {
        Write(path, text);
        EXPECT_EQ(Get(path, "k"), value);
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        for (int i = 0; i < 3; ++i) EXPECT_EQ(Get(path, "k"), value);  // also from the cache
    };
    const std::string lines = "; comment\r[s]\rk=v\rj=" + std::string(40000, 'x') + "\r";
    expectRead(lines, "v");
    expectRead("[s]\rk=v", "v");
    expectRead(std::string("\xFF\xFE[\0s\0]\0\r\0\n\0k\0=\0\x42\x30\r\0\n\0", 22), "\x82\xA0");
    expectRead(std::string("\xFE\xFF\0[\0s\0]\0\n\0k\0=\x30\x42", 16), "\x82\xA0");
    expectRead("\xFF\xFE[", "none");
    // Hundreds of lines of one name cannot be indexed.
    std::string many = "[s]\nk=v\n";
    for (int i = 0; i < 1000; ++i) many += "same=1\n";
    expectRead(many, "v");
}

TEST_F(ConfigFiles, FailedWritesChangeNothing) {
    const std::string path = Path("a.ini"), before = "[s]\nk=1\n" + std::string(5000, ';') + "\n";
    Write(path, before);
    // A full disk, as far as a process can stage one.
    waitpid(Start([&] {
                signal(SIGXFSZ, SIG_IGN);
                const rlimit limit{4096, 4096};
                setrlimit(RLIMIT_FSIZE, &limit);
                Set(path, "k", "2");
            }),
            nullptr, 0);
    EXPECT_EQ(BytesOf(path), before);
    EXPECT_EQ(std::distance(fs::directory_iterator(m_folder), {}), 1);

    Write(path, "\xFF\xFE[");
    Set(path, "k", "2");
    EXPECT_EQ(BytesOf(path), "\xFF\xFE[");
    fs::create_directory(Path("folder.ini"));
    fs::create_symlink("/dev/full", Path("full.ini"));
    fs::create_symlink("loop.ini", Path("loop.ini"));
    for (const std::string name : {"folder.ini", "full.ini", "loop.ini", "absent/a.ini"}) {
        Set(Path(name), "k", "1");
        EXPECT_EQ(Get(Path(name), "k"), "none") << name;
    }
    EXPECT_TRUE(fs::is_symlink(Path("full.ini")));
    Set(Path(std::string(4096, 'n')), "k", "1");
    EXPECT_EQ(Get(Path(std::string(4096, 'n')), "k"), "none");
    if (geteuid() != 0) {
        chmod(path.c_str(), 0400);
        Set(path, "k", "3");
        EXPECT_EQ(BytesOf(path), "\xFF\xFE[");
    }
}

TEST_F(ConfigFiles, SeeEachChangeOfAFile) {
    const std::string path = Path("a.ini");
    for (int i = 0; i < 300; ++i) {
        // In place and of the same size: only the time may differ.
        const std::string value = std::to_string(100 + i % 10);
        Write(path, "[s]\nk=" + value + "\n");
        for (int reading = 0; reading < 3; ++reading) ASSERT_EQ(Get(path, "k"), value);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    for (int reading = 0; reading < 3; ++reading) Get(path, "k");
    Write(path, "[s]\nk=new\n");
    EXPECT_EQ(Get(path, "k"), "new");
}

TEST_F(ConfigFiles, FindBareNamesInTheConfigurationFolder) {
    Set("bare.ini", "k", "1");
    EXPECT_EQ(BytesOf(Path("genutil/bare.ini")), "[s]\nk=1\n");
    EXPECT_EQ(Get("bare.ini", "k"), "1");
    OSSetSystemConfig("2", "s", "k");
    EXPECT_EQ(Get("default.ini", "k"), "2");
}

bool SetRegistry(const char* name, const std::string& value) {
    return OSSetSystemConfigReg(value.c_str(), "sub", name, "base") != 0;
}

std::string GetRegistry(const char* name) {
    CGNString value;
    OSGetSystemConfigReg(value, "none", "sub", name, "base");
    return std::string(value);
}

TEST_F(RegistryStore, IsMadeByTheFirstWriteForTheUserAlone) {
    EXPECT_EQ(GetRegistry("a"), "none");
    EXPECT_FALSE(fs::exists(Store()));
    EXPECT_TRUE(SetRegistry("a", "1"));
    struct stat file, folder;
    ASSERT_EQ(stat(Store().c_str(), &file) + stat(Path("genutil").c_str(), &folder), 0);
    EXPECT_EQ(file.st_mode & 0777, 0600u);
    EXPECT_EQ(folder.st_mode & 0777, 0700u);
}

TEST_F(RegistryStore, ProcessesLoseNoValues) {
    EXPECT_TRUE(SetRegistry("parent", "1"));  // open before the fork
    EXPECT_EQ(LostByTwoWriters(60, SetRegistry, GetRegistry), 0);
    EXPECT_EQ(GetRegistry("parent"), "1");
}

TEST_F(RegistryStore, DamagedStoreIsRenamed) {
    for (int round = 1; round <= 2; ++round) {
        EXPECT_TRUE(SetRegistry("a", "1"));
        const std::string damage(8192, '!');
        // In place, under the open store.
        std::fstream(Store(), std::ios::in | std::ios::out | std::ios::binary) << damage;
        EXPECT_EQ(GetRegistry("a"), "none");
        EXPECT_FALSE(fs::exists(Store()));
        EXPECT_EQ(BytesOf(Store() + ".damaged-" + std::to_string(round)).substr(0, 8192), damage);
    }
    Write(Store(), "no store at all, but somebody's text");
    EXPECT_FALSE(SetRegistry("a", "2"));
    EXPECT_EQ(BytesOf(Store() + ".damaged-3"), "no store at all, but somebody's text");
    EXPECT_TRUE(SetRegistry("a", "2"));
    EXPECT_EQ(GetRegistry("a"), "2");
}

TEST_F(RegistryStore, HoldsTextsOfAnyLanguage) {
    const struct {
        const char *name, *other;
        bool same;
    } kRows[] = {{"Caf\xC3\xA9", "CAF\xC3\x89", true}, {"a", "b", false}, {"", "x", false}};
    const CodeSetGuard guard(mbUtf8);
    for (const auto& row : kRows) {
        EXPECT_TRUE(SetRegistry(row.name, std::string("\xE6\x9D\xB1") + row.name));
        EXPECT_EQ(GetRegistry(row.name), std::string("\xE6\x9D\xB1") + row.name);
        EXPECT_EQ(GetRegistry(row.other) != "none", row.same);
    }
}

}  // namespace
