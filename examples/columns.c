/* Lays out a price list in columns: the names are in Shift-JIS, in which a character of two bytes
   is as wide as two letters. In C, with mbutil.h alone.

       columns */
#include <mbutil.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* Prints a text of the current code set in UTF-8, for the terminal. */
static int print(const char* text) {
    char* utf8;
    if (!mbConvertAlloc(text, strlen(text), mbGetLocaleCodeSet(), &utf8, mbUtf8, NULL)) return 0;
    fputs(utf8, stdout);
    free(utf8);
    return 1;
}

int main(void) {
    static const struct {
        const char *name, *price;
    } goods[] = {
        {"\x83\x65\x81\x5B\x83\x75\x83\x8B", "12,800"}, /* table */
        {"Lamp", "3,450"},
        {"\x96\x7B\x92\x49", "21,000"}, /* bookshelf */
        {"\xB6\xB0\xC3\xDD", "5,980"},  /* curtain, in half-width kana */
        {"\x95\x5C\x8E\x44", "760"},    /* name plate: its first character ends in a backslash */
    };
    const int width = 12;
    size_t i;
    InitMbutil(); /* first, or it would come after the choice and undo it */
    InitMbutilExt(mbShiftJis);
    for (i = 0; i < sizeof goods / sizeof *goods; ++i) {
        const char* name = goods[i].name;
        const int bytes = (int)strlen(name);
        if (!print(name)) return EXIT_FAILURE;
        printf("%*s%8s  %u characters, %d bytes\n", width - bytes, "", goods[i].price,
               mbcharcount(name, (unsigned)bytes), bytes);
    }
    return EXIT_SUCCESS;
}
