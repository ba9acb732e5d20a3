// The C locale, for numbers that do not depend on the locale of the caller.

#pragma once

#include <locale.h>

namespace simulator
{

// While an object of this class exists, the calling thread has the C locale.
class CLocale
{
public:
    CLocale() : callers(::uselocale(locale()))
    {
    }

    ~CLocale()
    {
        ::uselocale(callers);
    }

    CLocale(const CLocale&) = delete;
    CLocale& operator=(const CLocale&) = delete;

private:
    // Allocates no memory: this locale is built into the C library.
    static locale_t locale()
    {
        static const locale_t c = ::newlocale(LC_ALL_MASK, "C", nullptr);
        return c;
    }

    locale_t callers;
};

} // namespace simulator
