// genutil automation: lists the members of an automation server, and calls them.
#include <charconv>
#include <cstdio>
#include <locale>
#include <sstream>

#include "mbutil.h"
#include "osautomation.h"
#include "tools/genutil/command.h"
#include "tools/genutil/system.h"

namespace {

std::string Text(const CGNString& text) {
    return {static_cast<const char*>(text), text.GetLength()};
}

std::string Show(const COSOLEValue& value) {
    CGNString text;
    std::string shown;
    if (value.GetText(text)) {
        shown = Text(text);
    } else if (value.GetKind() == COSOLEValue::kArray) {
        shown += '[';
        for (long i = 0; i < value.GetCount(); ++i) {
            if (i != 0) shown += ", ";
            shown += Show(*value.GetItem(i));
        }
        shown += ']';
    } else {
        shown += '(';
        if (value.GetKind() == COSOLEValue::kBytes) {
            shown += std::to_string(value.GetCount());
            shown += ' ';
        }
        shown += value.GetKindName();
        shown += ')';
    }
    return shown;
}

void PrintParameter(const COSOLEParameter& parameter, bool first) {
    std::printf("%s%s", first ? "" : ", ", parameter.m_optional ? "[" : "");
    if (parameter.m_byReference) std::printf("%s ", parameter.m_output ? "out" : "ref");
    std::printf("%s", Text(parameter.m_name).c_str());
    if (!parameter.m_name.IsEmpty()) std::printf(": ");
    std::printf("%s", Text(parameter.m_type).c_str());
    if (parameter.m_hasDefault) std::printf(" = %s", Show(parameter.m_default).c_str());
    if (parameter.m_optional) std::printf("]");
}

void PrintMember(const COSOLEMember& member) {
    static constexpr const char* kUses[] = {"method", "get", "put", "putref"};
    std::printf("%-6s %s(", kUses[member.m_use], Text(member.m_name).c_str());
    for (int i = 0; i < member.m_parameters.GetCount(); ++i)
        PrintParameter(*member.m_parameters.GetItem(i), i == 0);
    std::printf("): %s\n", Text(member.m_type).c_str());
    if (!member.m_help.IsEmpty()) std::printf("       %s\n", Text(member.m_help).c_str());
}

Status Explain(const COSOLEAutomation& server) {
    return Complain("automation: " + Text(server.GetErrorText()));
}

Status List(COSOLEAutomation& server) {
    COSOLEList<COSOLEMember> members;
    if (!server.GetMembers(members)) return Explain(server);
    for (int i = 0; i < members.GetCount(); ++i)
        if (!members.GetItem(i)->m_hidden) PrintMember(*members.GetItem(i));
    return kOk;
}

bool Parse(const std::string& text, long long* out) {
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, *out);
    return !text.empty() && read.ec == std::errc() && read.ptr == end;
}

// Some C++ libraries lack std::from_chars for this type.
bool Parse(const std::string& text, double* out) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    in >> std::noskipws >> *out;
    return !in.fail() && in.peek() == std::istringstream::traits_type::eof();
}

// Parses "TYPE:TEXT", or a text without a type. Returns false for a text that is invalid for its
// type.
bool ParseValue(const std::string& argument, COSOLEValue* value) {
    const std::size_t colon = argument.find(':');
    const std::string type = colon == argument.npos ? "" : argument.substr(0, colon);
    const std::string text = colon == argument.npos ? "" : argument.substr(colon + 1);
    long long integer = 0;
    double real = 0;
    if (type == "text") {
        *value = COSOLEValue(text.c_str());
    } else if (type == "integer") {
        if (!Parse(text, &integer)) return false;
        *value = COSOLEValue(integer);
    } else if (type == "real") {
        if (!Parse(text, &real)) return false;
        *value = COSOLEValue(real);
    } else if (type == "boolean") {
        value->SetBoolean(text == "true");
        return text == "true" || text == "false";
    } else if (type == "decimal") {
        return value->SetDecimal(CGNDecimal(text.c_str()));
    } else if (type == "currency") {
        return value->SetCurrency(CGNCurrency(text.c_str()));
    } else if (type == "date") {
        CGNDateTime moment;
        return moment.FromString(text.c_str()) && value->SetDateTime(moment);
    } else if (type == "null") {
        value->SetNull();
    } else if (type == "missing") {
        value->SetMissing();
    } else {
        *value = COSOLEValue(argument.c_str());
    }
    return true;
}

bool ParseCall(const Arguments& positional, const Arguments& named, COSOLEArguments* out) {
    COSOLEValue value;
    for (const std::string& argument : positional) {
        const std::string text = ArgumentToUtf8(argument);
        if (!ParseValue(text, &value)) {
            Complain("automation: '" + text + "' does not match its type");
            return false;
        }
        out->Add(value);
    }
    for (const std::string& argument : named) {
        const std::string text = ArgumentToUtf8(argument);
        const std::size_t equals = text.find('=');
        if (equals == text.npos || equals == 0 || !ParseValue(text.substr(equals + 1), &value)) {
            Complain("automation: '" + text + "' is not of the form NAME=ARG");
            return false;
        }
        out->AddNamed(text.substr(0, equals).c_str(), value);
    }
    return true;
}

Status Call(COSOLEAutomation& server, const std::string& method, COSOLEArguments& arguments) {
    COSOLEValue result;
    if (!server.CallOrGet(method.c_str(), arguments, result)) return Explain(server);
    if (result.GetKind() != COSOLEValue::kEmpty) std::printf("%s\n", Show(result).c_str());
    return kOk;
}

Status RunAutomation(const Arguments& given) {
    Arguments rest, named;
    bool attach = false;
    const std::vector<Option> options = {{"--attach", nullptr, nullptr, &attach},
                                         {"--named", nullptr, nullptr, nullptr, &named}};
    if (!ParseArguments(given, options, &rest)) return kError;
    const std::string what = rest.empty() ? "" : rest[0];
    const bool list = what == "list" && rest.size() == 2 && named.empty();
    const bool call = what == "call" && rest.size() >= 3;
    if (!list && !call)
        return Complain("automation: 'list PROGID' or 'call PROGID METHOD ARG...' is needed");
    mbIsMultiByte();  // initialises; an earlier explicit choice would be lost
    InitMbutilExt(mbUtf8);
    COSOLEArguments arguments;
    if (call && !ParseCall({rest.begin() + 3, rest.end()}, named, &arguments)) return kError;
    COSOLEAutomation server;
    const CGNString identifier(ArgumentToUtf8(rest[1]).c_str());
    if (!(attach ? server.Attach(identifier) : server.Connect(identifier))) return Explain(server);
    return list ? List(server) : Call(server, ArgumentToUtf8(rest[2]), arguments);
}

}  // namespace

const Command kAutomationCommand = {
    "automation", "list|call PROGID...       shows what an automation server offers, and calls it",
    "genutil automation list PROGID [--attach]\n"
    "genutil automation call PROGID METHOD ARG... [--named NAME=ARG]... [--attach]\n"
    "\n"
    "Lists the methods and properties of an automation server with their parameters, or calls a\n"
    "method or gets a property and prints the result. Windows only. Texts are in UTF-8.\n"
    "\n"
    "  PROGID          the server's program identifier, such as Scripting.Dictionary\n"
    "  ARG             a text, or TYPE:VALUE with one of the types text, integer, real,\n"
    "                  boolean, decimal, currency, date, null: and missing:\n"
    "  --named NAME=ARG  an argument by its name; may be repeated\n"
    "  --attach        uses the running server; does not start one\n"
    "\n"
    "In a list, optional parameters are in brackets, with their default value. \"ref\" marks\n"
    "parameters that the server may change, \"out\" those that it only sets.\n"
    "\n"
    "Exit status: 0 success, 2 wrong usage, or the server or the call failed.\n",
    RunAutomation};
