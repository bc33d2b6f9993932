/* Decimal numbers and amounts of money, stored as text and formatted in the user's locale.

   A number is never converted to binary. Digits are copied between two spellings without rounding,
   and leading and trailing zeroes are kept. The C spelling, "-1234567.891", is for storage and
   exchange. The regional spelling uses the decimal symbol, separator and groups of the global
   locale (genlocale.h), which is consulted on every call.

       CGNDecimal number;
       number.SetRawBuffer("1.234.567,891");        // as the user typed it, in German
       number.ConvertToCLocale(0);
       CGNString text;
       number.GetDisplayBuffer(text);               // "1234567.891"

       CGNCurrency price("1234.5 usd");
       price.FormatCurrencyToRegional(1);
       price.GetDisplayCurrency();                  // "1.234,5 USD"

   A number has this form:
   - Digits "0" to "9" with at most one decimal symbol, which is next to a digit.
   - Group separators at any place between the first digit and the decimal symbol.
   - At most one "-", directly before or directly after the digits.
   - Trailing blanks. Leading blanks are an error.

   The empty text is the number zero. Brackets, "+" and other digits are errors. Separator and
   decimal symbol are one byte each. If the locale defines a longer one, only its first byte is read
   and written.

   Boolean results are an unsigned char, 1 or 0. Nothing throws. If allocation fails, a conversion
   fails in the same way as for a text that is not a number. An object may be used by one thread at
   a time; no locale object may change during a call. */
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

/** A decimal number as text: the number as set by the program and the result of the latest
    conversion. */
class GENUTIL_API CGNDecimal {
  public:
    /** Constructs an empty number. */
    CGNDecimal();
    /** Constructs a number from text in either spelling. */
    CGNDecimal(const CGNString& text);
    /** Constructs an empty number.
        @param locale receives the settings of the system (CLCLocale::Init); the pointer is not
            stored. May be null. */
    CGNDecimal(CLCLocale* locale);
    /** Copies the number and the display buffer. */
    CGNDecimal(const CGNDecimal& other);
    /** Copies the number and the display buffer. */
    CGNDecimal& operator=(const CGNDecimal& other);
    ~CGNDecimal();

    /** Resets the object to an empty number. Buffers are kept for reuse. */
    void InitValue();

    /** Sets the number to convert.
        @param text the number in either spelling; null for an empty number. */
    void SetRawBuffer(const char* text);
    /** Returns the number as it was set. The program may modify it. */
    CGNString& GetRawBuffer() { return m_raw; }
    /** Returns 1 if no number is set. */
    unsigned char IsEmpty() const { return m_raw.IsEmpty(); }

    /** Copies the result of the latest conversion or of ApplyExponent() to out. */
    void GetDisplayBuffer(CGNString& out) const { out = m_display; }

    /** Converts the number to the C spelling, without separators, in the display buffer. Only the
        first 63 bytes of the number are used. Returns 0 and empties the display buffer if the text
        is not a number.
        @param regional 1 reads the number in the regional spelling. 0 reads a number that
            consists only of digits, "." and a leading "-" in the C spelling, and any other in the
            regional spelling. With 0, "1.234" is therefore less than two even in a German
        locale. */
    unsigned char ConvertToCLocale(unsigned char regional);
    /** Converts the number to the regional spelling in the display buffer. The number is read as by
        ConvertToCLocale(0), and only its first 63 bytes are used. In all locales, the sign is a
        leading "-" and an empty integer part is written as "0". Returns 0 and empties the display
        buffer if the text is not a number.
        @param separators 1 inserts separators between digit groups. */
    unsigned char ConvertToRegionalLocale(unsigned char separators);

    /** Multiplies the number in the display buffer, in the regional spelling, by a power of ten.
        Group separators are removed. A fraction that remains after the new decimal symbol is cut to
        `exponent` digits: "0.12345" with exponent 2 gives "012.34". The display buffer is unchanged
        if the integer part or the fraction would exceed 255 digits.
        @param exponent the power of ten; 0 changes nothing. */
    void ApplyExponent(int exponent);

    /** Returns the first byte of the global locale's group separator, or 0 if it has none. */
    char GetRegionalThousandSep();
    /** Returns the first byte of the global locale's decimal symbol. */
    char GetRegionalDecimalSymbol();
    char GetCLocaleThousandSep() const;   /**< Returns ','. */
    char GetCLocaleDecimalSymbol() const; /**< Returns '.'. */

    /** Returns 0 if the text is a number in the regional spelling with at most 255 digits in the
        integer part and in the fraction. Returns -1 for any other text and for null. Note that 0
        means success. */
    static int IsValid(const char* text);
    /** Returns the offset, in bytes, of the end of the first run of digits and regional symbols.
        The text need not be a number. Returns 0 if there is no such run or text is null. */
    static int DetermineNumDecimalChars(const char* text);
    /** Returns 1 if c is the group separator of the global locale. */
    static unsigned char IsThousandsSeparator(char c);

  protected:
    CGNString m_display; /**< the result of the latest conversion */
    CGNString m_raw;     /**< the number as it was set */

  private:
    friend struct genutil::NumberAccess;

    bool GetLocaleSettings();

    // Settings of the global locale at the latest conversion. The negative format, the leading
    // zero flag and the negative sign are kept only for programs that inspect the object.
    CGNString m_grouping;
    std::int32_t m_negativeFormat;
    unsigned char m_leadingZeroes;
    CGNString m_decimalSymbol;
    CGNString m_negativeSign;
    CGNString m_groupSeparator;
};

/** An amount of money: a number and a currency code in one text, "12.50 USD". The code is the last
    three characters if all three are letters of one byte in the current code set. Blanks before it
    are optional. The text is split on first access to one of its parts. */
class GENUTIL_API CGNCurrency : public CGNDecimal {
  public:
    /** Constructs an empty amount. */
    CGNCurrency();
    /** Constructs an amount from text with a currency code. */
    CGNCurrency(const CGNString& text);
    /** Copies the amount. The copy splits its text again on first access. */
    CGNCurrency(const CGNCurrency& other);
    /** Constructs an empty amount. See CGNDecimal's constructor with a locale. */
    CGNCurrency(CLCLocale* locale);
    ~CGNCurrency();

    /** Copies the text, its parts and the display buffers. The flag that the text has been split is
        not copied. */
    CGNCurrency& operator=(const CGNCurrency& other);
    /** Sets the text. An empty text is the same as Init(). Parts that were already split, for
        example by formatting, are kept until SetBuffer() or an update is called; existing programs
        depend on this. */
    CGNCurrency& operator=(const CGNString& text);
    /** Returns 1 if both texts are equal byte by byte. */
    unsigned char operator==(const CGNCurrency& other) const { return m_buffer == other.m_buffer; }

    /** Resets the object to an empty amount. */
    void Init();
    /** Same as Init(). */
    void Empty();
    /** Returns 1 if both the text and the number are empty. */
    unsigned char IsEmpty() const { return m_raw.IsEmpty() && m_buffer.IsEmpty(); }

    /** Returns the amount with its currency code. */
    CGNString GetBuffer() const { return m_buffer; }
    /** Sets the text, an amount with its currency code. */
    void SetBuffer(const CGNString& text);

    /** Returns the result of the latest format operation, valid until the next one. */
    CGNString& GetDisplayCurrency() { return m_displayCurrency; }
    /** Returns the currency code, or an empty string if the text has none. */
    CGNString& GetCodePortion();
    /** Returns the number as written in the text, without the currency code. Returns an empty
        string if the text is blank. */
    CGNString& GetDecimalPortion();

    /** Formats the amount for display: the number in the C spelling followed by the currency code
        in capitals. The number is read in the regional spelling. If it is missing or malformed, the
        result is the unchanged code alone. Always returns 1. */
    unsigned char FormatCurrencyToCLocale();
    /** Formats the amount for display: the number in the regional spelling followed by the currency
        code in capitals. The number is read as by CGNDecimal::ConvertToRegionalLocale(). If it is
        missing or malformed, the result is the unchanged code alone. Always returns 1.
        @param separators 1 inserts separators between digit groups. */
    unsigned char FormatCurrencyToRegional(unsigned char separators);
    /** Formats the amount for display from the parts as they were last split: the unchanged number
        followed by the currency code in capitals. */
    void ResetDisplayBuffer();

    /** Replaces the number in the text and empties the result of GetDisplayCurrency(). */
    void UpdateDecimalPortion(const CGNString& amount);
    /** Replaces the currency code in the text and empties the result of GetDisplayCurrency(). The
        code may be empty. */
    void UpdateCodePortion(const CGNString& code);

  private:
    friend struct genutil::NumberAccess;

    bool SplitOnDemand();
    unsigned char Display(bool converted);
    void Join();

    CGNString m_displayCurrency;
    CGNString m_code;
    CGNString m_buffer;
    unsigned char m_parsed; /**< 1 if number and code have been split from the text */
};

#endif
