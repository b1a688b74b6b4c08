#include "document/amq_file.h"

#include "document/safe_file_write.h"

#include "document/circuit_edit.h"
#include "tables/number_text.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <optional>
#include <random>

namespace ampora {

namespace {

// Larger than any circuit the tables can hold by orders of magnitude; a bigger file is
// read only this far, so that a stray multi-gigabyte file cannot exhaust memory.
constexpr std::size_t kMaxFileBytes = 16 * 1024 * 1024;

std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) {
        quoted += c;
        if (c == '"') {
            quoted += '"'; // a quote inside a name is doubled, as in CSV
        }
    }
    return quoted + "\"";
}

// A field of a line: a view into the line itself, or into the splitter's copy when a quoted
// text holds doubled quotes. Valid until the next line is split. The everyday field, a short
// whole number, is parsed by the split itself; any other text is left to the exact parsers.
struct Field {
    std::string_view text;
    SmallWhole number; // the value of the text when `whole`
    bool whole = false;
    bool quoted = false;
};

// Every record of the file has four fields; a line with more is only counted.
constexpr std::size_t kRecordFields = 4;

// Splits a line into fields in one pass, without copying it: only a quoted text with doubled
// quotes is written out, into a buffer the fields then point into.
class FieldSplitter {
  public:
    // Splits one line; the reason when a quoted field is not closed properly, else empty.
    // Out of line so that it does not crowd SplitPlain, which takes nearly every line.
    [[gnu::noinline]] std::string_view Split(std::string_view line) {
        copied_ = 0;
        std::size_t count = 0;
        const char* at = line.data();
        const char* const last = at + line.size();
        while (true) {
            Field& field = count < kRecordFields ? fields_[count] : beyond_;
            ++count;
            at = SkipBlanks(at, last);
            if (at != last && *at == '"') {
                at = Quoted(at + 1, last, field);
                if (at == nullptr) {
                    return "a quoted text is not closed";
                }
                at = SkipBlanks(at, last);
                if (at != last && *at != ',') {
                    return "text follows a closing quote";
                }
            } else {
                at = Unquoted(at, last, field);
            }
            if (at == last) {
                count_ = count;
                return {};
            }
            ++at; // the comma
        }
    }

    // The everyday line, bare short whole numbers between commas, split straight from the
    // text in the same pass that finds the line's end: returns where the next line begins,
    // or nullptr when the line holds anything else and must be cut out and Split.
    const char* SplitPlain(const char* at, const char* last) {
        for (std::size_t count = 1; count <= kRecordFields; ++count) {
            Field& field = fields_[count - 1];
            const char* const end = ScanSmallWhole(at, last, field.number);
            if (end == nullptr) {
                return nullptr;
            }
            field.text = std::string_view(at, static_cast<std::size_t>(end - at));
            field.whole = true;
            field.quoted = false;
            if (end != last && *end == ',') {
                at = end + 1;
                continue;
            }
            count_ = count;
            if (end == last) {
                return last;
            }
            if (*end == '\n') {
                return end + 1;
            }
            if (*end == '\r' && end + 1 != last && end[1] == '\n') {
                return end + 2;
            }
            return nullptr;
        }
        return nullptr; // a fifth field: Split counts them all
    }

    std::size_t Count() const { return count_; }
    // One of the first four fields of the line last split, which split cleanly.
    const Field& operator[](std::size_t index) const { return fields_.at(index); }

  private:
    static bool IsBlank(char c) { return c == ' ' || c == '\t'; }

    static const char* SkipBlanks(const char* at, const char* last) {
        while (at != last && IsBlank(*at)) {
            ++at;
        }
        return at;
    }

    // An unquoted text from its first character to the comma or line end that closes it,
    // which is returned; trailing blanks are not part of it.
    static const char* Unquoted(const char* first, const char* last, Field& field) {
        field.quoted = false;
        const char* const digitsEnd = ScanSmallWhole(first, last, field.number);
        const char* const close = std::find(first, last, ',');
        const char* end = close;
        while (end != first && IsBlank(end[-1])) {
            --end;
        }
        field.text = std::string_view(first, static_cast<std::size_t>(end - first));
        field.whole = digitsEnd != nullptr && digitsEnd == end;
        return close;
    }

    // A quoted text from just after its opening quote; the position after its closing
    // quote, or nullptr when it is not closed.
    const char* Quoted(const char* first, const char* last, Field& field) {
        field.quoted = true;
        field.whole = false;
        for (const char* at = first; at != last; ++at) {
            if (*at != '"') {
                continue;
            }
            if (at + 1 != last && at[1] == '"') {
                return Unquote(first, last, field);
            }
            field.text = std::string_view(first, static_cast<std::size_t>(at - first));
            return at + 1;
        }
        return nullptr;
    }

    // A quoted text with doubled quotes, each of which stands for one: copied out without
    // them. The buffer is sized to the line at the line's first such text, so that it
    // never moves under the fields already pointing into it.
    const char* Unquote(const char* first, const char* last, Field& field) {
        if (copied_ == 0) {
            unquoted_.resize(static_cast<std::size_t>(last - first));
        }
        const std::size_t start = copied_;
        for (const char* at = first; at != last;) {
            if (*at == '"') {
                if (at + 1 != last && at[1] == '"') {
                    unquoted_[copied_++] = '"';
                    at += 2;
                    continue;
                }
                field.text = std::string_view(unquoted_).substr(start, copied_ - start);
                return at + 1;
            }
            unquoted_[copied_++] = *at++;
        }
        return nullptr;
    }

    std::array<Field, kRecordFields> fields_;
    Field beyond_; // where the fields past the fourth are scanned, to be counted
    std::size_t count_ = 0;
    std::string unquoted_;
    std::size_t copied_ = 0; // characters of unquoted_ used by the current line
};

class LineReader {
  public:
    explicit LineReader(std::string_view text)
        : at_(text.data()), last_(text.data() + text.size()) {}

    // Splits the next line, without its LF or CR LF, into `fields`; false at the end of the
    // text. `problem` is why the line could not be split, and stays empty when it could.
    bool Next(FieldSplitter& fields, std::string_view& problem) {
        if (at_ == last_) {
            return false;
        }
        ++number_;
        if (const char* next = fields.SplitPlain(at_, last_)) {
            at_ = next;
            return true;
        }
        const char* const lf = std::find(at_, last_, '\n');
        std::string_view line(at_, static_cast<std::size_t>(lf - at_));
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        at_ = lf == last_ ? last_ : lf + 1;
        problem = fields.Split(line);
        return true;
    }

    int Number() const { return number_; }

  private:
    const char* at_;
    const char* last_;
    int number_ = 0;
};

// What a line or a field holds, such as "wire 3" or "element 2 value". Put into words
// only when reading fails, as most files read without a fault.
struct Subject {
    std::string_view name;
    int slot = 0; // 0: the name alone
    std::string_view field{};

    std::string Text() const {
        std::string text(name);
        if (slot != 0) {
            text += " " + std::to_string(slot);
        }
        if (!field.empty()) {
            text += " ";
            text += field;
        }
        return text;
    }
};

struct Stop {
    int line;
    std::string reason;
};

class CircuitReader {
  public:
    CircuitReader(Circuit& circuit, std::string_view text) : circuit_(circuit), lines_(text) {}

    ReadResult Run() {
        try {
            ReadWires();
            ReadElements();
            ReadNodes();
        } catch (const Stop& stop) {
            return ReadResult{false, stop.line, stop.reason};
        }
        return ReadResult{true, lines_.Number(), ""};
    }

  private:
    [[noreturn]] void Fail(const std::string& reason) const {
        throw Stop{lines_.Number(), "line " + std::to_string(lines_.Number()) + ": " + reason};
    }

    // The fields of the next line, valid until the next call.
    const FieldSplitter& Fields(const Subject& what, std::size_t expected) {
        std::string_view problem;
        const bool read = lines_.Next(splitter_, problem);
        if (!read || !problem.empty() || splitter_.Count() != expected) [[unlikely]] {
            FailFields(what, expected, read, problem);
        }
        return splitter_;
    }

    // Out of line, as are the other failures, so that the words they build do not crowd the
    // path that every line takes.
    [[noreturn, gnu::cold, gnu::noinline]] void
    FailFields(const Subject& what, std::size_t expected, bool read, std::string_view problem) {
        if (!read) {
            throw Stop{lines_.Number() + 1, "the file ends where " + what.Text() +
                                                " should follow (line " +
                                                std::to_string(lines_.Number() + 1) + ")"};
        }
        if (!problem.empty()) {
            Fail(what.Text() + ": " + std::string(problem));
        }
        Fail(what.Text() + " needs " + std::to_string(expected) + " field" +
             (expected == 1 ? "" : "s") + ", found " + std::to_string(splitter_.Count()));
    }

    float Number(const Field& field, const Subject& line, std::string_view which) const {
        if (field.whole) {
            return field.number.AsFloat();
        }
        const auto value = field.quoted ? std::nullopt : ParseFloat(field.text);
        if (!value) {
            FailNumber(field, Subject{line.name, line.slot, which});
        }
        return *value;
    }

    [[noreturn, gnu::cold, gnu::noinline]] void FailNumber(const Field& field,
                                                           const Subject& what) const {
        Fail(what.Text() + " is not a finite single-precision number: \"" +
             Abbreviated(field.text) + "\"");
    }

    static std::optional<long long> WholeNumber(const Field& field) {
        if (field.whole) {
            return field.number.AsInteger();
        }
        return field.quoted ? std::nullopt : ParseInteger(field.text);
    }

    // `what` is the count's name with its article, such as "the wire count".
    std::int16_t Count(std::string_view what, int capacity) {
        const auto& fields = Fields(Subject{what}, 1);
        const auto value = WholeNumber(fields[0]);
        if (!value) {
            Fail(std::string(what) + " is not a whole number: \"" + Abbreviated(fields[0].text) +
                 "\"");
        }
        if (*value < 0 || *value > capacity) {
            Fail(std::string(what) + " " + std::to_string(*value) + " is outside 0.." +
                 std::to_string(capacity));
        }
        return static_cast<std::int16_t>(*value);
    }

    static std::string Abbreviated(std::string_view text) {
        return text.size() <= 40 ? std::string(text) : std::string(text.substr(0, 40)) + "...";
    }

    void ReadWires() {
        const std::int16_t count = Count("the wire count", kMaxWires);
        circuit_.NumWires = count;
        for (int slot = 1; slot <= count; ++slot) {
            const Subject what{"wire", slot};
            const auto& fields = Fields(what, 4);
            Wire wire;
            wire.X1 = Number(fields[0], what, "X1");
            wire.Y1 = Number(fields[1], what, "Y1");
            wire.X2 = Number(fields[2], what, "X2");
            wire.Y2 = Number(fields[3], what, "Y2");
            wire.Used = kTrue;
            circuit_.Wires[slot] = wire;
        }
    }

    void ReadElements() {
        const std::int16_t count = Count("the element count", kMaxElements);
        for (int slot = 1; slot <= count; ++slot) {
            const Subject what{"element", slot};
            const auto& fields = Fields(what, 4);
            Element element;
            element.X = Number(fields[0], what, "X");
            element.Y = Number(fields[1], what, "Y");
            const auto kind = WholeNumber(fields[2]);
            if (!kind || *kind < 1 || *kind > 10) {
                Fail(what.Text() + " has kind \"" + Abbreviated(fields[2].text) +
                     "\"; kinds run from 1 to 10");
            }
            element.Kind = static_cast<std::int16_t>(*kind);
            element.Value = Number(fields[3], what, "value");
            circuit_.Elements[slot] = element;
            // Raised as each element arrives, so that every walk sees what was read even
            // when the file stops early.
            if (slot > circuit_.NumElements) {
                circuit_.NumElements = static_cast<std::int16_t>(slot);
            }
        }
    }

    void ReadNodes() {
        const std::int16_t count = Count("the node count", kMaxNodes);
        circuit_.NumNodes = 0;
        for (int slot = 1; slot <= count; ++slot) {
            const Subject what{"node", slot};
            const auto& fields = Fields(what, 4);
            NodeLabel node;
            // The name is written twice; the second copy is the one that counts.
            node.Name = std::string(fields[1].text);
            node.X = Number(fields[2], what, "X");
            node.Y = Number(fields[3], what, "Y");
            circuit_.NodeLabels[slot] = node;
            circuit_.NumNodes = static_cast<std::int16_t>(slot);
        }
    }

    Circuit& circuit_;
    LineReader lines_;
    FieldSplitter splitter_;
};

std::optional<std::string> ReadFileBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        return std::nullopt;
    }
    std::string bytes;
    char chunk[1 << 16];
    while (bytes.size() < kMaxFileBytes) {
        in.read(chunk, sizeof chunk);
        bytes.append(chunk, static_cast<std::size_t>(in.gcount()));
        if (!in) {
            break;
        }
    }
    if (in.bad()) {
        return std::nullopt;
    }
    return bytes;
}

} // namespace

std::string CircuitFileText(const Circuit& circuit) {
    const std::string eol = "\r\n";
    std::string text = std::to_string(CountLiveWires(circuit)) + eol;
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& w = circuit.Wires[slot];
        if (w.Used != 0) {
            text += ShortestText(w.X1) + "," + ShortestText(w.Y1) + "," + ShortestText(w.X2) + "," +
                    ShortestText(w.Y2) + eol;
        }
    }
    text += std::to_string(CountLiveElements(circuit)) + eol;
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const Element& e = circuit.Elements[slot];
        if (e.Kind != kEmpty) {
            text += ShortestText(e.X) + "," + ShortestText(e.Y) + "," + std::to_string(e.Kind) +
                    "," + ShortestText(e.Value) + eol;
        }
    }
    text += std::to_string(circuit.NumNodes) + eol;
    for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
        const NodeLabel& n = circuit.NodeLabels[slot];
        text += Quoted(n.Name) + "," + Quoted(n.Name) + "," + ShortestText(n.X) + "," +
                ShortestText(n.Y) + eol;
    }
    return text;
}

ReadResult ReadCircuitText(Circuit& circuit, std::string_view text) {
    return CircuitReader(circuit, text).Run();
}

ReadResult LoadFromIniFile(Circuit& circuit, const std::string& path) {
    const auto bytes = ReadFileBytes(path);
    if (!bytes) {
        return ReadResult{false, 0, "the file cannot be opened"};
    }
    return ReadCircuitText(circuit, *bytes);
}

SaveResult SaveToIniFile(const Circuit& circuit, const std::string& path) {
    const FileWriteResult written = WriteFileSafely(path, CircuitFileText(circuit));
    if (!written.written) {
        return SaveResult{false, written.reason + "."};
    }
    return SaveResult{};
}

bool NeedFileSave(const Circuit& circuit, const std::string& currentFileName) {
    if (CountLiveWires(circuit) == 0) {
        return false;
    }
    if (currentFileName.empty()) {
        return true;
    }
    // A damaged file is compared with the part that can be read, which is what opening it
    // showed: a drawing left as it was opened is not offered for saving over the file.
    Circuit saved;
    if (LoadFromIniFile(saved, currentFileName).line == 0) {
        return true;
    }
    int fileSlot = 0;
    if (CountLiveWires(circuit) != CountLiveWires(saved)) {
        return true;
    }
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& w = circuit.Wires[slot];
        if (w.Used == 0) {
            continue;
        }
        const Wire& f = saved.Wires[++fileSlot];
        if (w.X1 != f.X1 || w.Y1 != f.Y1 || w.X2 != f.X2 || w.Y2 != f.Y2) {
            return true;
        }
    }
    if (CountLiveElements(circuit) != CountLiveElements(saved)) {
        return true;
    }
    fileSlot = 0;
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const Element& e = circuit.Elements[slot];
        if (e.Kind == kEmpty) {
            continue;
        }
        const Element& f = saved.Elements[++fileSlot];
        if (e.X != f.X || e.Y != f.Y || e.Kind != f.Kind || e.Value != f.Value) {
            return true;
        }
    }
    if (circuit.NumNodes != saved.NumNodes) {
        return true;
    }
    for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
        const NodeLabel& n = circuit.NodeLabels[slot];
        const NodeLabel& f = saved.NodeLabels[slot];
        if (n.Name != f.Name || n.X != f.X || n.Y != f.Y) {
            return true;
        }
    }
    return false;
}

} // namespace ampora
