// The system's own calls for profile files and the registry.
#include "bench/config_bench.h"

#include <windows.h>

#include <vector>

namespace {

void ReadProfile(benchmark::State& state, int files) {
    int turn = 0;
    char value[256];
    for (auto _ : state) {
        ++turn;
        benchmark::DoNotOptimize(GetPrivateProfileStringA(SectionOf(turn), "some key 57", "none",
                                                          value, sizeof value,
                                                          FileName(turn % files).c_str()));
    }
}

void WriteProfile(benchmark::State& state) {
    int number = 0;
    const std::string name = FileName(kFiles - 2);
    for (auto _ : state)
        WritePrivateProfileStringA("section 25", "some key 57", std::to_string(++number).c_str(),
                                   name.c_str());
}

constexpr char kKey[] = "Software\\config_bench\\sub";

HKEY OpenKey() {
    HKEY key = nullptr;
    RegCreateKeyExA(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    return key;
}

void SetValue(HKEY key, const std::string& name, const std::string& text) {
    RegSetValueExA(key, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                   static_cast<DWORD>(text.size() + 1));
}

// The key is opened for each value, as programs do.
void ReadRegistry(benchmark::State& state) {
    HKEY key = OpenKey();
    std::vector<std::string> names;
    for (int i = 0; i < kValues; ++i) {
        names.push_back(ValueName(i));
        SetValue(key, names.back(), "C:\\Program Files\\Tour");
    }
    RegCloseKey(key);
    std::size_t turn = 0;
    for (auto _ : state) {
        char value[256];
        DWORD size = sizeof value;
        if (RegOpenKeyExA(HKEY_CURRENT_USER, kKey, 0, KEY_READ, &key) != ERROR_SUCCESS ||
            RegQueryValueExA(key, names[++turn % kValues].c_str(), nullptr, nullptr,
                             reinterpret_cast<BYTE*>(value), &size) != ERROR_SUCCESS)
            state.SkipWithError("not read");
        RegCloseKey(key);
    }
}

void WriteRegistry(benchmark::State& state) {
    int number = 0;
    for (auto _ : state) {
        const HKEY key = OpenKey();
        SetValue(key, "counter", std::to_string(++number));
        RegCloseKey(key);
    }
}

}  // namespace

void PrepareRegistry() {}

void RegisterPeers() {
    Register("ini read cold/GetPrivateProfileString", ReadProfile, kFiles);
    Register("ini read warm/GetPrivateProfileString", ReadProfile, 1);
    Register("ini write/WritePrivateProfileString", WriteProfile);
    Register("registry read/RegQueryValueEx", ReadRegistry);
    Register("registry write/RegSetValueEx", WriteRegistry);
}
