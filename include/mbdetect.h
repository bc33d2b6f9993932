/* Detection of the encoding of a text. Usable from C and C++.

       mbGuess guesses[3];
       const int count = mbDetect(bytes, length, "ja_JP", guesses, 3);
       if (count > 0 && guesses[0].confidence >= 0.9)
           convert(bytes, length, guesses[0].codeSet);

   Encodings are first ruled out by bytes that they do not have. The remaining ones are compared by
   how likely their letters follow one another in about 50 languages. */
#ifndef GENUTIL_MBDETECT_H
#define GENUTIL_MBDETECT_H

#include <stddef.h>

#include "mbutil.h"

#if defined(__cplusplus)
extern "C" {
#endif

/** What a guess is based on. */
enum mbGuessKind {
    mbGuessMark = 1,     /**< a byte-order mark begins the text */
    mbGuessAscii = 2,    /**< the text has ASCII characters only, or none */
    mbGuessValid = 3,    /**< the bytes are valid in a Unicode encoding and look like text in it */
    mbGuessEscapes = 4,  /**< the text has the escape sequences of the encoding */
    mbGuessLetters = 5,  /**< the letters are those of a language */
    mbGuessTooShort = 6, /**< as mbGuessLetters, but the text is too short to tell */
    mbGuessDamaged = 7   /**< mostly valid, but some bytes are not */
};

/** A possible encoding of a text. */
typedef struct mbGuess {
    int codeSet;       /**< the code set, for mbConvert; mbUtf8 for ASCII */
    int kind;          /**< one of mbGuessKind */
    int markLength;    /**< length of the byte-order mark in bytes, which is not text */
    char language[4];  /**< the language whose letters fit best, such as "cs"; may be empty */
    char name[24];     /**< MIME name of the encoding, such as "windows-1250" */
    char evidence[96]; /**< the reason in English: "valid UTF-8, 14 multi-byte characters" */
    double confidence; /**< probability that the text is read right, from 0 to 1 */
} mbGuess;

/** Guesses the encoding of a text. Returns the number of guesses written, the best first. Returns 0
    if the bytes look like no text at all, such as binary or badly damaged data, if max is not
    positive, or if allocation fails.

    Of several encodings in which the text is the same, only the most usual one is listed: a text in
    ISO 8859-1 is mostly also one in Windows-1252. Letters are compared in at most the first 2,048
    bytes of the text around bytes above ASCII; the bytes of the whole text must be valid. An
    incomplete character at the end is accepted. Takes time in proportion to the length. The first
    call fills tables, which may allocate and call the system.
    @param bytes the text; null is treated as empty.
    @param length length of the text in bytes.
    @param hint name of a locale such as "ja_JP" whose language is more likely than others; null or
        empty if nothing is known. English has no effect, because its texts are almost ASCII.
    @param out receives the guesses.
    @param max number of guesses that fit into out. */
GENUTIL_API int mbDetect(const char* bytes, size_t length, const char* hint, mbGuess* out, int max);

#if defined(__cplusplus)
}
#endif

#endif
