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

namespace {

std::size_t Utf16UnitsOfLead(char lead) {
    return (static_cast<unsigned char>(lead) & 0xF8) == 0xF0 ? 2 : 1;
}

} // namespace

std::size_t Utf16Length(std::string_view text) {
    std::size_t units = 0;
    for (const char c : text) {
        units += StartsCharacter(c) ? Utf16UnitsOfLead(c) : 0;
    }
    return units;
}

std::size_t ByteOffsetOfUtf16Position(std::string_view text, std::size_t position) {
    std::size_t seen = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (StartsCharacter(text[i])) {
            seen += Utf16UnitsOfLead(text[i]);
            if (seen > position) {
                return i;
            }
        }
    }
    return text.size();
}

} // namespace ampora
