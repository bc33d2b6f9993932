// A DDE server for the tests: dde_server SERVICE. What it does with a call is the conversation's
// topic: "take", "refuse", "busy", "slow" (takes it after 1.2 seconds), "die", "leave" (ends the
// conversation), "late" (answers a request with its item's name, and a while later with a refusal)
// and "system" (takes it, and knows only text of the system's code page). Texts that it takes are
// kept under their item's name, commands under "last"; "open" is the number of conversations. The
// command "[quit]" ends it. With a second argument commands come to it in the system's
// code page. dde_server hang has a window that answers nothing.
#include <windows.h>
// Behind it, which it needs.
#include <dde.h>
#include <ddeml.h>

#include <cstddef>
#include <cstring>
#include <cwchar>
#include <map>
#include <string>

namespace {

DWORD g_instance;
int g_open;
std::map<std::wstring, std::string> g_texts;  // as bytes of either format

std::wstring NameOf(HSZ handle) {
    wchar_t name[300] = L"";
    DdeQueryStringW(g_instance, handle, name, 300, CP_WINUNICODE);
    return name;
}

HDDEDATA Result(int flags) {
    return reinterpret_cast<HDDEDATA>(flags);
}

HDDEDATA Take(const std::wstring& name, HDDEDATA data) {
    std::string bytes(DdeGetData(data, nullptr, 0, 0), '\0');
    DdeGetData(data, reinterpret_cast<BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size()), 0);
    g_texts[name] = bytes;
    for (const std::string& quit : {std::string("[\0q\0u\0i\0t\0]\0", 12), std::string("[quit]")})
        if (bytes.compare(0, quit.size(), quit) == 0) PostQuitMessage(0);
    return Result(DDE_FACK);
}

// As the server's side of the protocol has it.
void Post(HCONV conversation, UINT message, LPARAM parameter) {
    CONVINFO info = {};
    info.cb = sizeof info;
    DdeQueryConvInfo(conversation, static_cast<DWORD>(QID_SYNC), &info);
    PostMessageW(info.hwndPartner, message, reinterpret_cast<WPARAM>(info.hwnd), parameter);
}

// DdeDisconnect may be for clients only.
void Leave(HCONV conversation) {
    Post(conversation, WM_DDE_TERMINATE, 0);
}

HDDEDATA GiveAndRefuse(HCONV conversation, const std::wstring& name) {
    const std::size_t size = (name.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory =
        GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, offsetof(DDEDATA, Value) + size);
    DDEDATA* const data = static_cast<DDEDATA*>(GlobalLock(memory));
    *data = {};
    data->fResponse = data->fRelease = 1;
    data->cfFormat = CF_UNICODETEXT;
    std::memcpy(data->Value, name.c_str(), size);
    GlobalUnlock(memory);
    Post(conversation, WM_DDE_DATA,
         PackDDElParam(WM_DDE_DATA, reinterpret_cast<UINT_PTR>(memory),
                       GlobalAddAtomW(name.c_str())));
    Sleep(300);
    return nullptr;
}

HDDEDATA Change(const std::wstring& topic, HCONV conversation, const std::wstring& name,
                HDDEDATA data) {
    if (topic == L"refuse") return Result(DDE_FNOTPROCESSED);
    if (topic == L"busy") return Result(DDE_FBUSY);
    if (topic == L"slow") Sleep(1200);
    if (topic == L"die") ExitProcess(3);
    if (topic == L"leave") Leave(conversation);
    return Take(name, data);
}

HDDEDATA Give(const std::wstring& topic, HSZ item, UINT format) {
    if (topic == L"busy") return Result(DDE_FNOTPROCESSED);
    if (topic == L"slow") Sleep(1200);
    if (topic == L"die") ExitProcess(3);
    const std::wstring name = NameOf(item);
    if (name == L"open") {
        const std::wstring number = std::to_wstring(g_open);
        g_texts[name].assign(reinterpret_cast<const char*>(number.c_str()), number.size() * 2 + 2);
    }
    const auto found = g_texts.find(name);
    if (topic == L"refuse" || found == g_texts.end()) return nullptr;
    std::string& bytes = found->second;
    return DdeCreateDataHandle(g_instance, reinterpret_cast<BYTE*>(bytes.data()),
                               static_cast<DWORD>(bytes.size()), 0, item, format, 0);
}

HDDEDATA CALLBACK OnDde(UINT type, UINT format, HCONV conversation, HSZ topicName, HSZ item,
                        HDDEDATA data, ULONG_PTR, ULONG_PTR) {
    const std::wstring topic = NameOf(topicName);
    const bool knowsFormat = (format == CF_TEXT) == (topic == L"system");
    switch (type) {
        case XTYP_CONNECT:
            return Result(topic != L"missing");
        case XTYP_CONNECT_CONFIRM:
            ++g_open;
            return nullptr;
        case XTYP_DISCONNECT:
            --g_open;
            return nullptr;
        case XTYP_EXECUTE:
            return Change(topic, conversation, L"last", data);
        case XTYP_POKE:
            return knowsFormat ? Change(topic, conversation, NameOf(item), data)
                               : Result(DDE_FNOTPROCESSED);
        case XTYP_REQUEST:
            if (topic == L"late") return GiveAndRefuse(conversation, NameOf(item));
            return knowsFormat ? Give(topic, item, format) : nullptr;
        default:
            return nullptr;
    }
}

void CALLBACK GiveUp(HWND, UINT, UINT_PTR, DWORD) {
    ExitProcess(4);
}

int Hang(DWORD milliseconds) {
    CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    Sleep(milliseconds);
    return 0;
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 2) return 2;
    if (std::strcmp(arguments[1], "hang") == 0) return Hang(3000);
    const auto initialize = count > 2 ? DdeInitializeA : DdeInitializeW;
    if (initialize(&g_instance, OnDde, APPCLASS_STANDARD, 0) != DMLERR_NO_ERROR) return 1;
    const HSZ service = DdeCreateStringHandleA(g_instance, arguments[1], CP_WINANSI);
    DdeNameService(g_instance, service, nullptr, DNS_REGISTER);
    SetTimer(nullptr, 0, 120000, GiveUp);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    DdeUninitialize(g_instance);
    return 0;
}
