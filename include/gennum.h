/* Decimal numbers and amounts of money, held as text and written as the user's locale does.

   A number is never turned into a binary one: digits go from one spelling to the other as they are,
   none is rounded away, and leading and trailing zeroes stay. There are two spellings. The C
   spelling, "-1234567.891", is for storing and exchanging. The regional one has the decimal symbol,
   the separator and the groups of the global locale (genlocale.h), which is asked anew each time.

       CGNDecimal number;
       number.SetRawBuffer("1.234.567,891");        // as the user typed it, in German
       number.ConvertToCLocale(0);
       CGNString text;
       number.GetDisplayBuffer(text);               // "1234567.891"

       CGNCurrency price("1234.5 usd");
       price.FormatCurrencyToRegional(1);
       price.GetDisplayCurrency();                  // "1.234,5 USD"

   What counts as a number: digits with one decimal symbol at most, in front of or behind a digit;
   separators anywhere between the first digit and it, at right places or not; one "-" directly in
   front or directly behind; blanks behind it all, but not in front. The empty text is the number
   zero. Brackets, "+" and digits other than "0" to "9" are not known. Separator and decimal symbol
   are one byte: of a locale's longer ones the first byte counts, which is then written too.

   Results that answer yes or no are an unsigned char of 1 or 0. Nothing throws; without memory a
   conversion fails as that of a text which is no number. An object belongs to one thread at a
   time, and no locale object may change meanwhile. */
#ifndef GENUTIL_GENNUM_H
#define GENUTIL_GENNUM_H

#include <cstdint>

#include "genexport.h"
#include "genlocale.h"
#include "gennumholder.h"
#include "genstr.h"

namespace genutil {
struct NumberAccess;
}

/** A decimal number as text: what the program set, and what the latest conversion made of it. */
class GENUTIL_API CGNDecimal {
  public:
    /** An empty number. */
    CGNDecimal();
    /** @param text the number, in either spelling. */
    CGNDecimal(const CGNString& text);
    /** An empty number. @param locale is filled from the system (CLCLocale::Init) and not kept;
        null is allowed. */
    CGNDecimal(CLCLocale* locale);
    /** A copy, with what is displayed. */
    CGNDecimal(const CGNDecimal& other);
    /** Takes number and display. */
    CGNDecimal& operator=(const CGNDecimal& other);
    ~CGNDecimal();

    /** Back to an empty number; buffers are kept for the next one. */
    void InitValue();

    /** Sets the number to convert. @param text in either spelling; null for an empty one. */
    void SetRawBuffer(const char* text);
    /** @return the number as it was set: the program may change it. */
    CGNString& GetRawBuffer() { return m_raw; }
    /** @return 1 when no number is set. */
    unsigned char IsEmpty() const { return m_raw.IsEmpty(); }

    /** Copies what the latest conversion or ApplyExponent made. @param out receives it. */
    void GetDisplayBuffer(CGNString& out) const { out = m_display; }

    /** Makes the C spelling of the number, without separators. Of the number that was set the first
        63 bytes count.
        @param regional 1 reads it in the regional spelling; 0 reads one that has only digits, "."
        and a leading "-" in the C spelling: then "1.234" is less than two in German too.
        @return 0, with nothing to display, when it is no number. */
    unsigned char ConvertToCLocale(unsigned char regional);
    /** Makes the regional spelling of the number: its first 63 bytes, read as by ConvertToCLocale
        with 0. The sign is a leading "-" and an empty integer part a "0" in all locales.
        @param separators 1 writes separators between groups of digits.
        @return 0, with nothing to display, when it is no number. */
    unsigned char ConvertToRegionalLocale(unsigned char separators);

    /** Multiplies what is displayed, in the regional spelling, by a power of ten; separators are
        dropped. Of a fraction that goes on behind the new decimal symbol at most `exponent` digits
        stay: "0.12345" by 2 is "012.34". Stays as it is when one of its parts would have more than
        255 digits. @param exponent the power; 0 changes nothing. */
    void ApplyExponent(int exponent);

    /** @return the global locale's separator of groups, its first byte; 0 when there is none. */
    char GetRegionalThousandSep();
    /** @return the global locale's decimal symbol, its first byte. */
    char GetRegionalDecimalSymbol();
    char GetCLocaleThousandSep() const;   /**< @return "," */
    char GetCLocaleDecimalSymbol() const; /**< @return "." */

    /** @return 0 for a number in the regional spelling, whose integer part and fraction have 255
        digits at most; -1 for any other text and for null. Mind the order: programs test for 0. */
    static int IsValid(const char* text);
    /** @return how many bytes lead up to the end of the first run of digits and regional symbols,
        those in front of it included, whether the text is a number or not; 0 without such a run and
        for null. */
    static int DetermineNumDecimalChars(const char* text);
    /** @return 1 when c is the global locale's separator of groups. */
    static unsigned char IsThousandsSeparator(char c);

  protected:
    CGNString m_display; /**< what the latest conversion made */
    CGNString m_raw;     /**< the number as it was set */

  private:
    friend struct genutil::NumberAccess;

    bool GetLocaleSettings();

    // The global locale's as of the latest conversion. The sign and the two numbers are there for
    // programs that look into the object; no conversion reads them.
    CGNString m_grouping;
    std::int32_t m_negativeFormat;
    unsigned char m_leadingZeroes;
    CGNString m_decimalSymbol;
    CGNString m_negativeSign;
    CGNString m_groupSeparator;
};

/** An amount of money: a number and the code of its currency in one text, "12.50 USD". The code is
    the last three characters when these are letters, which are characters of one byte in the
   current code set; blanks may stand in front of it or not. The text is split when a part of it is
   first asked for. */
class GENUTIL_API CGNCurrency : public CGNDecimal {
  public:
    /** An empty amount. */
    CGNCurrency();
    /** @param text the amount with its code. */
    CGNCurrency(const CGNString& text);
    /** A copy, which splits its text anew. */
    CGNCurrency(const CGNCurrency& other);
    /** As CGNDecimal's constructor with a locale. */
    CGNCurrency(CLCLocale* locale);
    ~CGNCurrency();

    /** Takes text, parts and what was made to display. Whether the parts count as those of the text
        stays as it was here before. */
    CGNCurrency& operator=(const CGNCurrency& other);
    /** Takes a text; an empty one does Init. Programs rely on this: parts that were split already,
        which formatting does, stay until SetBuffer or an update. @param text the amount with its
        code. */
    CGNCurrency& operator=(const CGNString& text);
    /** @return 1 when the two texts are the same, byte by byte. */
    unsigned char operator==(const CGNCurrency& other) const { return m_buffer == other.m_buffer; }

    /** Back to an empty amount. */
    void Init();
    /** The same as Init. */
    void Empty();
    /** @return 1 when the text and the number are both empty. */
    unsigned char IsEmpty() const { return m_raw.IsEmpty() && m_buffer.IsEmpty(); }

    /** @return the amount with its code. */
    CGNString GetBuffer() const { return m_buffer; }
    /** Sets it. @param text the amount with its code. */
    void SetBuffer(const CGNString& text);

    /** @return what a format operation made, valid until the next. */
    CGNString& GetDisplayCurrency() { return m_displayCurrency; }
    /** @return the code; empty when the text has none. */
    CGNString& GetCodePortion();
    /** @return the number as the text has it, without its code; empty when the text is blank. */
    CGNString& GetDecimalPortion();

    /** Makes the text to display: the number, read in the regional spelling, in the C spelling, and
        its code in capitals. Without a number, or with one that is none, the code alone as it is.
        @return 1. */
    unsigned char FormatCurrencyToCLocale();
    /** The same with the number, read as CGNDecimal::ConvertToRegionalLocale does, in the regional
        spelling. @param separators 1 writes separators between groups of digits. @return 1. */
    unsigned char FormatCurrencyToRegional(unsigned char separators);
    /** Makes the text to display of the number as it is and its code in capitals, of the parts as
        they were last split. */
    void ResetDisplayBuffer();

    /** Replaces the number in the text; nothing is displayed any more. @param amount the number. */
    void UpdateDecimalPortion(const CGNString& amount);
    /** Replaces the code likewise. @param code may be empty. */
    void UpdateCodePortion(const CGNString& code);

  private:
    friend struct genutil::NumberAccess;

    bool SplitOnDemand();
    unsigned char Display(bool converted);
    void Join();

    CGNString m_displayCurrency;
    CGNString m_code;
    CGNString m_buffer;
    unsigned char m_parsed; /**< number and code are those of the text */
};

#endif
