/* Objects on the heap that live as long as their holder: a locale, and the places that programs
   keep for settings of numbers and of money. A holder's pointer is null when memory ran out. */
#ifndef GENUTIL_GENNUMHOLDER_H
#define GENUTIL_GENNUMHOLDER_H

#include "genexport.h"
#include "genlocale.h"

/** A place for settings of numbers; there are none. */
class GENUTIL_API CLCNumber {
  public:
    CLCNumber();
    ~CLCNumber();
    CLCNumber(const CLCNumber& other);            /**< nothing to copy */
    CLCNumber& operator=(const CLCNumber& other); /**< nothing to take */
};

/** A place for settings of money; there are none. */
class GENUTIL_API CLCMoney {
  public:
    CLCMoney();
    ~CLCMoney();
    CLCMoney(const CLCMoney& other);            /**< nothing to copy */
    CLCMoney& operator=(const CLCMoney& other); /**< nothing to take */
};

/** Holds a locale, in plain English at first. */
class GENUTIL_API CGNLocale {
  public:
    CGNLocale();
    ~CGNLocale();
    CGNLocale(const CGNLocale&) = delete;
    CGNLocale& operator=(const CGNLocale&) = delete;
    /** @return the locale, owned by the holder; null when memory ran out. */
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
    /** @return the object, owned by the holder; null when memory ran out. */
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
    /** @return the object, owned by the holder; null when memory ran out. */
    CLCMoney* GetMoney() const { return m_money; }

  private:
    CLCMoney* m_money;
};

#endif
