#include "fobrob/words.h"

#include "fobrob/category.h"

const char* textOf(std::span<const Word> words, std::int32_t value, const char* otherwise)
{
    for (const Word& word : words)
        if (word.value == value)
            return word.text;
    return otherwise;
}

std::int32_t valueOf(std::span<const Word> words, const char* text, std::int32_t otherwise)
{
    for (const Word& word : words)
        if (equalsIgnoringCase(text, word.text))
            return word.value;
    return otherwise;
}
