#pragma once
// A small streaming JSON writer for the batch tool's output: two-space indentation,
// numbers with 17 significant digits, non-finite numbers as null.

#include <string>
#include <string_view>
#include <vector>

namespace ampora::cli {

class JsonWriter {
  public:
    void BeginObject();
    void EndObject();
    void BeginArray();
    void EndArray();
    void Key(std::string_view key);

    void String(std::string_view text);
    void Number(double value);
    void Integer(long long value);
    void Null();
    void Bool(bool value);

    // Convenience for "key": value members.
    void Member(std::string_view key, std::string_view text) { Key(key), String(text); }
    void Member(std::string_view key, const char* text) { Key(key), String(text); }
    void Member(std::string_view key, double value) { Key(key), Number(value); }
    void Member(std::string_view key, int value) { Key(key), Integer(value); }

    const std::string& Text() const { return out_; }

  private:
    void BeforeValue();
    void NewLine();
    void Open(char bracket);
    void Close(char bracket);

    std::string out_;
    struct Level {
        bool empty = true;
    };
    std::vector<Level> levels_;
    bool afterKey_ = false;
};

std::string JsonQuoted(std::string_view text);
std::string JsonNumber(double value);

} // namespace ampora::cli
