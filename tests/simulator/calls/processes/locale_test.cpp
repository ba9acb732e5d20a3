// Callers whose locale does not use a period as the decimal point.

#include "device/qv_aux2.h"
#include "support/called_unit.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <locale.h>

namespace
{

// Compiles a locale with another decimal point and sets it for this thread.
class OtherLocale
{
public:
    explicit OtherLocale(const std::string& decimalPoint)
    {
        writeFile(directory / "source", "LC_NUMERIC\ndecimal_point \"" + decimalPoint +
                                            "\"\nthousands_sep \"\"\ngrouping -1\nEND LC_NUMERIC\n");
        runCommand(
            {.words = {"localedef", "-c", "-i", directory / "source", "-f", "UTF-8", directory / "other"},
             .environment = {{"PATH", "/usr/bin:/bin"}}});
        setenv("LOCPATH", directory.path.c_str(), 1);
        // newlocale() would leak a copy of LOCPATH.
        if (setlocale(LC_NUMERIC, "other"))
            locale = duplocale(LC_GLOBAL_LOCALE);
        setlocale(LC_NUMERIC, "C");
        unsetenv("LOCPATH");
        if (locale)
            before = uselocale(locale);
    }

    ~OtherLocale()
    {
        if (!locale)
            return;
        uselocale(before);
        freelocale(locale);
    }

    OtherLocale(const OtherLocale&) = delete;
    OtherLocale& operator=(const OtherLocale&) = delete;

    bool isSet() const
    {
        return locale != nullptr;
    }

private:
    TemporaryDirectory directory;
    locale_t locale = nullptr;
    locale_t before = nullptr;
};

// The decimal points are a comma and a two-byte character.
TEST(Locale, OfTheCallerDoesNotAffectNumbers)
{
    for (const char* decimalPoint : {"<U002C>", "<U066B>"})
    {
        SCOPED_TRACE(decimalPoint);
        const CalledUnit unit(R"({"frontLed": {"frequency": 2.5}})");
        const OtherLocale locale(decimalPoint);
        if (!locale.isSet())
            GTEST_SKIP() << "localedef is missing; it is in the package locales";
        const std::string point = localeconv()->decimal_point;
        EXPECT_NE(point, ".");
        const FrontLEDHandle led = GetFrontLED();
        double frequency = 0;
        std::uint8_t duty = 0;
        EXPECT_EQ(FrontLED_getSignal(led, &frequency, &duty), 0u);
        EXPECT_EQ(frequency, 2.5);
        EXPECT_EQ(FrontLED_setSignal(led, 3.75, 50), 0u);
        EXPECT_THAT(readFile(unit.file()), testing::HasSubstr("\"frequency\": 3.75"));
        EXPECT_EQ(unit.calls().back(), "FrontLED_setSignal(3.75, 50) = 0");
        EXPECT_EQ(localeconv()->decimal_point, point) << "the locale of the caller has changed";
    }
}

} // namespace
