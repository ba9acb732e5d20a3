// Preloaded into the program: strcasecmp() also appends its arguments to the file COMPARED_WORDS, one line
// per call.

#include <cctype>
#include <cstdio>
#include <cstdlib>

extern "C" __attribute__((visibility("default"))) int strcasecmp(const char* text, const char* word) noexcept
{
    if (std::FILE* record = std::fopen(std::getenv("COMPARED_WORDS"), "a"))
    {
        std::fprintf(record, "%s %s\n", text, word);
        std::fclose(record);
    }
    const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    for (; *text && lower(*text) == lower(*word); ++text, ++word)
        ;
    return lower(*text) - lower(*word);
}
