/* mbutil.h as a C program uses it. */
#include <string.h>

#include "mbutil.h"

int CountInC(const char* text);

int CountInC(const char* text) {
    int count = 0;
    unsigned at = 0;
    if (!mbIsMultiByte()) return (int)strlen(text);
    do {
        ++count;
    } while ((at = mbnextidx(text, at)) != 0);
    return count;
}
