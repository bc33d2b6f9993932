// An output file that appears whole or not at all.
#pragma once

#include <string>

// Whether the path may be written: it must not exist, unless `force`. False after a message.
bool MayWrite(const std::string& path, bool force);

// Writes to a new file beside the path and then gives it the path's name; until then, and after
// any failure, what has that name is untouched. Devices and pipes are written to. False after a
// message.
bool WriteFile(const std::string& path, const std::string& text);
