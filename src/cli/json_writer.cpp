#include "cli/json_writer.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace ampora::cli {

std::string JsonQuoted(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                char escaped[8];
                std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned char>(c));
                out += escaped;
            } else {
                out += c;
            }
        }
    }
    return out + "\"";
}

std::string JsonNumber(double value) {
    if (!std::isfinite(value)) {
        return "null";
    }
    char buffer[64];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 17);
    return std::string(buffer, result.ptr);
}

void JsonWriter::NewLine() {
    out_ += '\n';
    out_.append(levels_.size() * 2, ' ');
}

void JsonWriter::BeforeValue() {
    if (afterKey_) {
        afterKey_ = false;
        return;
    }
    if (!levels_.empty()) {
        if (!levels_.back().empty) {
            out_ += ',';
        }
        levels_.back().empty = false;
        NewLine();
    }
}

void JsonWriter::Open(char bracket) {
    BeforeValue();
    out_ += bracket;
    levels_.push_back(Level{});
}

void JsonWriter::Close(char bracket) {
    const bool empty = levels_.back().empty;
    levels_.pop_back();
    if (!empty) {
        NewLine();
    }
    out_ += bracket;
    if (levels_.empty()) {
        out_ += '\n';
    }
}

void JsonWriter::BeginObject() {
    Open('{');
}
void JsonWriter::EndObject() {
    Close('}');
}
void JsonWriter::BeginArray() {
    Open('[');
}
void JsonWriter::EndArray() {
    Close(']');
}

void JsonWriter::Key(std::string_view key) {
    BeforeValue();
    out_ += JsonQuoted(key) + ": ";
    afterKey_ = true;
}

void JsonWriter::String(std::string_view text) {
    BeforeValue();
    out_ += JsonQuoted(text);
}

void JsonWriter::Number(double value) {
    BeforeValue();
    out_ += JsonNumber(value);
}

void JsonWriter::Integer(long long value) {
    BeforeValue();
    out_ += std::to_string(value);
}

void JsonWriter::Null() {
    BeforeValue();
    out_ += "null";
}

void JsonWriter::Bool(bool value) {
    BeforeValue();
    out_ += value ? "true" : "false";
}

} // namespace ampora::cli
