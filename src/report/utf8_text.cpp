#include "report/utf8_text.h"

#include <algorithm>

namespace ampora {

namespace {

bool StartsCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
}

} // namespace

std::size_t CharacterCount(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), StartsCharacter));
}

std::size_t ByteOffsetOfCharacter(std::string_view text, std::size_t character) {
    std::size_t seen = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (StartsCharacter(text[i])) {
            if (seen == character) {
                return i;
            }
            ++seen;
        }
    }
    return text.size();
}

} // namespace ampora
