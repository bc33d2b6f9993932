// Any operations on lists of numbers and of strings in any order, compared with the same operations
// on vectors, and operations in which an allocation fails. Two bytes of the input choose an
// operation and its argument.
#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "genlist.h"
#include "tests/support/allocation_gate.h"
#include "tests/support/reported_failures.h"

namespace {

// Calls act(operation, argument) for each pair of bytes.
template <class Act>
void Play(const std::uint8_t* data, std::size_t size, Act act) {
    for (std::size_t i = 0; i + 1 < size; i += 2) act(data[i], data[i + 1]);
}

void CheckNumbers(const std::uint8_t* data, std::size_t size) {
    CGNList list(data[0] % 4, data[1] % 12);
    std::vector<long> model;
    Play(data, size, [&](unsigned operation, long argument) {
        const int count = static_cast<int>(model.size());
        const int at = static_cast<int>(argument) % (count + 3) - 1, last = count - 1;
        const bool inside = at >= 0 && at < count;
        switch (operation % 6) {
            case 0:
                Check(list.AddItem(argument), "add");
                model.push_back(argument);
                break;
            case 1:
                Check(list.InsertItem(at, argument) == (inside || at == count), "insert");
                if (inside || at == count) model.insert(model.begin() + at, argument);
                break;
            case 2:
                list.DeleteItem(at);
                if (inside) model.erase(model.begin() + at);
                break;
            case 3:  // the place after the last item can also be written
                Check(list.SetItem(at, argument) == (inside || at == count), "set");
                if (inside) model[static_cast<std::size_t>(at)] = argument;
                break;
            case 4:
                Check(list.SwapItems(at, last) == inside, "swap");
                if (inside) std::swap(model[static_cast<std::size_t>(at)], model.back());
                break;
            case 5:
                const CGNList copy(list);
                if (argument % 8 == 0) list.Free();
                list = copy;
        }
        Check(list.GetCount() == static_cast<int>(model.size()), "count");
        for (int i = 0; i < list.GetCount(); ++i)
            Check(list.GetItem(i) == model[static_cast<std::size_t>(i)], "item");
        Check(list.GetItem(-1) == 0 && list.GetItem(list.GetCount()) == 0, "no item outside");
    });
}

void CheckStrings(const std::uint8_t* data, std::size_t size) {
    CGNStringList list;
    std::vector<std::string> model;
    Play(data, size, [&](unsigned operation, unsigned argument) {
        const int count = static_cast<int>(model.size());
        const int at = static_cast<int>(argument) % (count + 3) - 1;
        const std::string text(1 + argument % 2, static_cast<char>('a' + argument % 7));
        const auto found = std::find(model.begin(), model.end(), text);
        switch (operation % 8) {
            case 0:
                Check(list.AddItem(text.c_str()), "add");
                model.push_back(text);
                break;
            case 1:
                Check(list.InsertItem(at, text.c_str()) == (at >= 0 && at <= count), "insert");
                if (at >= 0 && at <= count) model.insert(model.begin() + at, text);
                break;
            case 2:
                list.DeleteItem(at);
                if (at >= 0 && at < count) model.erase(model.begin() + at);
                break;
            case 3:
                Check(list.AddUnique(text.c_str()) == (found == model.end()), "add a new one");
                if (found == model.end()) model.push_back(text);
                break;
            case 4: {  // the position is counted without the equal string
                if (found != model.end()) model.erase(found);
                const bool inside = at >= 0 && at <= static_cast<int>(model.size());
                Check(list.InsertUnique(at, text.c_str()) == inside, "insert the only one");
                if (inside) model.insert(model.begin() + at, text);
                break;
            }
            case 5:
                if (argument % 2) list.Sort(), std::sort(model.begin(), model.end());
                break;
            case 6: {
                CGNStringListList lists;
                Check(lists.AddItem(list) && lists.InsertItem(0, *lists.GetItem(0)), "list of it");
                list = *lists.GetItem(1);
                break;
            }
            case 7:
                if (count > 40) list.Free(), model.clear();
                if (!model.empty()) list.AddItem(*list.GetItem(0)), model.push_back(model[0]);
        }
        Check(list.GetCount() == static_cast<int>(model.size()), "count of strings");
        for (int i = 0; i < list.GetCount(); ++i)
            Check(*list.GetItem(i) == model[static_cast<std::size_t>(i)].c_str(), "string");
        Check(!list.GetItem(-1) && !list.GetItem(list.GetCount()), "no string outside");
    });
}

struct Lists {
    CGNList numbers{1, 1};
    CGNStringList strings{1, 1};
    CGNStringListList lists;
    CGNCleanupList calls;
};

const CGNString kText("text");
void (*const kOperations[])(Lists&) = {
    [](Lists& l) { l.numbers.AddItem(5), l.numbers.AddItem(6); },
    [](Lists& l) { l.numbers.InsertItem(0, 5), l.numbers.SetItem(l.numbers.GetCount(), 6); },
    [](Lists& l) { CGNList(l.numbers).AddItem(1), l.numbers = CGNList(7, 3); },
    [](Lists& l) { l.strings.AddItem(kText), l.strings.AddItem("more"); },
    [](Lists& l) { l.strings.InsertItem(0, kText), l.strings.InsertUnique(0, kText); },
    [](Lists& l) { l.strings.ParseFrom("a;b;c", ';'), l.strings.AddUnique(kText); },
    [](Lists& l) { l.strings.AddItem("a"), l.strings.Sort(); },
    [](Lists& l) { l.strings = CGNStringList(l.strings) += l.strings; },
    [](Lists& l) { l.lists.AddItem(l.strings), l.lists.InsertItem(0, l.strings); },
    [](Lists& l) { l.lists = CGNStringListList(l.lists); },
    [](Lists& l) { l.calls.AddItem([](void*) {}, nullptr), l.calls.Execute(); },
};

// Each string is one that was added, or null. Each list of a list is complete.
void CheckWhole(const Lists& lists) {
    static constexpr const char* kAdded[] = {"first", "second", "text", "more", "a", "b", "c"};
    for (int i = 0; i < lists.strings.GetCount(); ++i) {
        const CGNString* const item = lists.strings.GetItem(i);
        Check(!item || std::count(std::begin(kAdded), std::end(kAdded), std::string(*item)),
              "a string that was added");
    }
    for (int i = 0; i < lists.lists.GetCount(); ++i) {
        const CGNStringList* const list = lists.lists.GetItem(i);
        Check(list && list->GetCount() == 2 && list->GetItem(1), "a complete list");
    }
}

void CheckFailure(unsigned operation, int failing) {
    const auto run = kOperations[operation % std::size(kOperations)];
    Lists lists;
    lists.strings.AddItem("first");
    lists.strings.AddItem("second");
    lists.lists.AddItem(lists.strings);
    const ReportedFailures reported;
    bool failed;
    {
        const AllocationGate gate(failing, 1);
        run(lists);
        failed = gate.Count() > failing;
    }
    Check((reported.Count() > 0) == failed, "failures are reported");
    CheckWhole(lists);
    run(lists);
    Check(lists.strings.AddItem("usable"), "the list is usable");
    Check(*lists.strings.GetItem(lists.strings.GetCount() - 1) == "usable", "and has the string");
}

// Compares the parts of a text. An empty part at the end is dropped.
void CheckParsing(const std::string& text, char separator) {
    CGNString all;
    for (const char c : text) all += c;
    CGNStringList list;
    const unsigned count = list.ParseFrom(all, separator);
    std::string joined;
    for (int i = 0; i < list.GetCount(); ++i) {
        joined.append(*list.GetItem(i), list.GetItem(i)->GetLength());
        joined += separator;
    }
    Check(count == static_cast<unsigned>(list.GetCount()), "number of parts");
    Check(joined == text || (joined == text + separator), "parts joined");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    CheckNumbers(data, size);
    CheckStrings(data, size);
    CheckFailure(data[0], data[1] % 32);
    CheckParsing(std::string(reinterpret_cast<const char*>(data) + 1, size - 1), char(data[0]));
    return 0;
}
