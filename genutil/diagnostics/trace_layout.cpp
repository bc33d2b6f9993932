#include "genutil/diagnostics/trace_layout.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "genstr.h"
#include "genutil/diagnostics/trace_date.h"

namespace genutil {
namespace {

// -- Dates ---------------------------------------------------------------------------------------

// Writes a number with at least `digits` digits.
void AppendNumber(TraceLine* line, long number, int digits) {
    char text[24];
    const int length = std::snprintf(text, sizeof text, "%0*ld", digits, number);
    line->Append(text, static_cast<std::size_t>(length));
}

void AppendOffset(TraceLine* line, const TraceMoment& at, const char* separator) {
    line->Append(at.offset < 0 ? "-" : "+", 1);
    const long minutes = std::labs(at.offset) / 60;
    AppendNumber(line, minutes / 60, 2);
    line->Append(separator, std::strlen(separator));
    AppendNumber(line, minutes % 60, 2);
}

// Writes the element of a date that a letter stands for. Returns false if there is none.
bool AppendDateElement(TraceLine* line, char letter, const TraceMoment& at) {
    switch (letter) {
        case 'Y':
            AppendNumber(line, at.year, 4);
            return true;
        case 'y':
            AppendNumber(line, at.year % 100, 2);
            return true;
        case 'm':
            AppendNumber(line, at.month, 2);
            return true;
        case 'd':
            AppendNumber(line, at.day, 2);
            return true;
        case 'H':
            AppendNumber(line, at.hour, 2);
            return true;
        case 'M':
            AppendNumber(line, at.minute, 2);
            return true;
        case 'S':
            AppendNumber(line, at.second, 2);
            return true;
        case 'L':
            AppendNumber(line, at.millisecond, 3);
            return true;
        case 's':
            AppendNumber(line, at.sinceEpoch, 1);
            return true;
        case 'z':
            AppendOffset(line, at, "");
            return true;
        case '%':
            line->Append("%", 1);
            return true;
        default:
            return false;
    }
}

// Letters for several elements.
const char* ExpandDateLetter(char letter) {
    switch (letter) {
        case 'F':
            return "%Y-%m-%d";
        case 'T':
            return "%H:%M:%S";
        case 'D':
            return "%m/%d/%y";
        case 'R':
            return "%H:%M";
        default:
            return nullptr;
    }
}

// -- Fields --------------------------------------------------------------------------------------

enum class Field { kNone, kMessage, kModule, kThread, kPosition, kMask, kBrace };

struct FieldName {
    const char* text;
    Field field;
};
constexpr FieldName kFields[] = {{"{message}", Field::kMessage},   {"{module}", Field::kModule},
                                 {"{thread}", Field::kThread},     {"{mask}", Field::kMask},
                                 {"{position}", Field::kPosition}, {"{{", Field::kBrace}};

const FieldName* FieldAt(const char* at) {
    for (const FieldName& name : kFields)
        if (std::strncmp(at, name.text, std::strlen(name.text)) == 0) return &name;
    return nullptr;
}

void AppendField(TraceLine* line, Field field, const TraceMessage& message) {
    const auto append = [line](const char* text) {
        if (text) line->Append(text, std::strlen(text));
    };
    switch (field) {
        case Field::kMessage:
            line->AppendMessage(message.format, *message.arguments);
            break;
        case Field::kModule:
            append(message.module);
            break;
        case Field::kThread:
            AppendNumber(line, static_cast<long>(message.thread), 1);
            break;
        case Field::kMask:
            AppendNumber(line, message.mask & 0xFFFF, 1);
            break;
        case Field::kPosition:
            append(message.position);
            break;
        case Field::kBrace:
            append("{");
            break;
        case Field::kNone:
            break;
    }
}

// Walks over a format. Calls text(begin, length), date(letter) and field(Field) for its parts until
// one returns false.
template <class Text, class Date, class FieldAction>
bool Walk(const char* format, Text text, Date date, FieldAction field) {
    while (*format) {
        const std::size_t plain = std::strcspn(format, "%{");
        if (plain > 0 && !text(format, plain)) return false;
        format += plain;
        if (*format == '%') {
            if (!format[1] || !date(format[1])) return false;
            format += 2;
        } else if (*format == '{') {
            const FieldName* name = FieldAt(format);
            if (!name || !field(name->field)) return false;
            format += std::strlen(name->text);
        }
    }
    return true;
}

void AppendFormatted(TraceLine* line, const char* format, const TraceMoment& at,
                     const TraceMessage& message) {
    Walk(
        format,
        [&](const char* text, std::size_t length) { return line->Append(text, length), true; },
        [&](char letter) {
            if (const char* several = ExpandDateLetter(letter))
                AppendFormatted(line, several, at, message);
            else
                AppendDateElement(line, letter, at);
            return true;
        },
        [&](Field field) { return AppendField(line, field, message), true; });
}

}  // namespace

bool IsTraceFormat(const char* format) {
    TraceLine unused;
    int messages = 0;
    const bool isKnown = Walk(
        format, [](const char*, std::size_t) { return true; },
        [&](char letter) {
            return ExpandDateLetter(letter) || AppendDateElement(&unused, letter, TraceMoment{});
        },
        [&](Field field) { return field != Field::kMessage || ++messages == 1; });
    return isKnown;
}

void WriteFormatted(TraceLine* line, const char* format, bool isUtc, const TraceMessage& message) {
    TraceMoment now;
    ReadTraceMoment(isUtc, &now);
    AppendFormatted(line, format, now, message);
}

// -- JSON ----------------------------------------------------------------------------------------

namespace {

void AppendJsonText(TraceLine* line, const char* name, const char* text) {
    line->Append(",\"", 2);
    line->Append(name, std::strlen(name));
    line->Append("\":\"", 3);
    CGNString escaped(text), utf8;
    escaped.EncodeJSONString();
    escaped.ToUtf8(utf8);
    line->Append(utf8, std::strlen(utf8));
    line->Append("\"", 1);
}

void AppendJsonNumber(TraceLine* line, const char* name, long number) {
    char text[60];
    const int length = std::snprintf(text, sizeof text, ",\"%s\":%ld", name, number);
    line->Append(text, static_cast<std::size_t>(length));
}

}  // namespace

void WriteJson(TraceLine* line, bool isUtc, const TraceMessage& message) {
    TraceMoment now;
    ReadTraceMoment(isUtc, &now);
    line->Append("{\"time\":\"", 9);
    AppendFormatted(line, "%FT%T.%L", now, message);
    if (isUtc)
        line->Append("Z", 1);
    else
        AppendOffset(line, now, ":");
    line->Append("\"", 1);
    AppendJsonNumber(line, "thread", static_cast<long>(message.thread));
    AppendJsonNumber(line, "mask", message.mask & 0xFFFF);
    AppendJsonText(line, "module", message.module);
    TraceLine text;
    text.AppendMessage(message.format, *message.arguments);
    AppendJsonText(line, "message", text.Text());
    if (message.position) AppendJsonText(line, "position", message.position);
    line->Append("}", 1);
}

}  // namespace genutil
