// The parts of a line of a trace file.
#pragma once

#include <string>

struct LogLine {
    bool begins = false;  // false if the line continues a message of several lines
    std::string time;     // "2026-11-21 09:30:12.000"; empty if the line has none
    std::string thread;   // empty if the line has none
    std::string module;   // likewise
};

// Recognises the default form, JSON lines, and lines that begin with an ISO date.
LogLine ParseLogLine(const std::string& line);
