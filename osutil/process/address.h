// Addresses of documents, such as "https://...".
#pragma once

namespace genutil {

// Returns true if a text begins with a scheme: at least two characters, of which the first is a
// letter. A leading "-" would make it an option of the program that opens it.
bool IsAddress(const char* text);

}  // namespace genutil
