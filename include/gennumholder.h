/* Holders that own a heap object for their lifetime: a locale, and placeholders for number and
   money settings. The pointer of a holder is null if allocation fails. */
#ifndef GENUTIL_GENNUMHOLDER_H
#define GENUTIL_GENNUMHOLDER_H

#include "genexport.h"
#include "genlocale.h"

/** A placeholder for number settings. It has no members. */
class GENUTIL_API CLCNumber {
  public:
    CLCNumber();
    ~CLCNumber();
    CLCNumber(const CLCNumber& other);            /**< Copies nothing. */
    CLCNumber& operator=(const CLCNumber& other); /**< Copies nothing. */
};

/** A placeholder for money settings. It has no members. */
class GENUTIL_API CLCMoney {
  public:
    CLCMoney();
    ~CLCMoney();
    CLCMoney(const CLCMoney& other);            /**< Copies nothing. */
    CLCMoney& operator=(const CLCMoney& other); /**< Copies nothing. */
};

/** Holds a locale, initially with plain English settings. */
class GENUTIL_API CGNLocale {
  public:
    CGNLocale();
    ~CGNLocale();
    CGNLocale(const CGNLocale&) = delete;
    CGNLocale& operator=(const CGNLocale&) = delete;
    /** Returns the locale, owned by the holder, or null if allocation failed. */
    CLCLocale* GetLocale() const { return m_locale; }

  private:
    CLCLocale* m_locale;
};

/** Holds a CLCNumber. */
class GENUTIL_API CGNNumber {
  public:
    CGNNumber();
    ~CGNNumber();
    CGNNumber(const CGNNumber&) = delete;
    CGNNumber& operator=(const CGNNumber&) = delete;
    /** Returns the object, owned by the holder, or null if allocation failed. */
    CLCNumber* GetNumber() const { return m_number; }

  private:
    CLCNumber* m_number;
};

/** Holds a CLCMoney. */
class GENUTIL_API CGNMoney {
  public:
    CGNMoney();
    ~CGNMoney();
    CGNMoney(const CGNMoney&) = delete;
    CGNMoney& operator=(const CGNMoney&) = delete;
    /** Returns the object, owned by the holder, or null if allocation failed. */
    CLCMoney* GetMoney() const { return m_money; }

  private:
    CLCMoney* m_money;
};

#endif
