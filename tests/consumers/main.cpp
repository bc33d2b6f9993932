// A program as users write it; tests/install_test.py builds it in every way that they build theirs.
#include <genstr.h>
#include <genutil/genlocale.h>
#include <genutil/mbutil.h>

#include <cstdio>

int main() {
    InitMbutil();
    InitMbutilExt(mbShiftJis);
    const CGNString name("\x8C\xE1\x94\x79");
    CLCLocale german;
    german.SetLocale("de_DE");
    CGNString symbol;
    german.GetDecDecimalSymbol(symbol);
    std::printf("%u characters, decimal symbol %s\n", name.GetLengthInChars(),
                static_cast<const char*>(symbol));
    return 0;
}
