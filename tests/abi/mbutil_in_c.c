/* mbutil.h, and the checksum of genlist.h, as a C program uses them. */
#include <string.h>

#include "genlist.h"
#include "mbutil.h"

int CountInC(const char* text);
unsigned ChecksumInC(const char* text);

int CountInC(const char* text) {
    int count = 0;
    unsigned at = 0;
    if (!mbIsMultiByte()) return (int)strlen(text);
    do {
        ++count;
    } while ((at = mbnextidx(text, at)) != 0);
    return count;
}

unsigned ChecksumInC(const char* text) {
    return gencrc32(0, (const unsigned char*)text, (unsigned)strlen(text));
}
