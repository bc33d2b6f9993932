// Moments on the command line.
#pragma once

#include <string>

// "2010-03-20T23:00:00+09:00 in Asia/Tokyo, 1269093600 seconds since 1970", in the zone in force.
std::string DescribeMoment(long seconds);

// Makes a zone that of the process; an empty name changes nothing. False after a message.
bool UseZone(const std::string& name);

// Seconds since 1970, or "now". False after a message.
bool ParseSeconds(const std::string& text, long* seconds);
