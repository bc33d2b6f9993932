// Moments on the command line.
#pragma once

#include <string>

// Returns "2010-03-20T23:00:00+09:00 in Asia/Tokyo, 1269093600 seconds since 1970", in the zone in
// force.
std::string DescribeMoment(long seconds);

// Sets the zone of the process. An empty name changes nothing. Returns false after a message.
bool UseZone(const std::string& name);

// Parses seconds since 1970, or "now". Returns false after a message.
bool ParseSeconds(const std::string& text, long* seconds);
