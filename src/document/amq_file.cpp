#include "document/amq_file.h"

#include "document/circuit_edit.h"
#include "document/number_text.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <random>
#include <vector>

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

// A field of a line: a view into the line itself, or into the line's unquoted copies when
// a quoted text holds doubled quotes. Valid until the next line is split.
struct Field {
    std::string_view text;
    bool quoted = false;
};

// Splits lines into fields without copying them: only a quoted text with doubled quotes
// is written out, into a buffer the fields then point into.
class FieldSplitter {
  public:
    // Splits one line into `fields`; false when a quoted field is not closed properly.
    bool Split(std::string_view line, std::vector<Field>& fields, std::string& problem) {
        fields.clear();
        spans_.clear();
        unquoted_.clear();
        if (!SplitSpans(line, problem)) {
            return false;
        }
        for (const Span& span : spans_) {
            const std::string_view from = span.unquoted ? std::string_view(unquoted_) : line;
            fields.push_back(Field{from.substr(span.begin, span.length), span.quoted});
        }
        return true;
    }

  private:
    struct Span {
        std::size_t begin = 0;
        std::size_t length = 0;
        bool quoted = false;
        bool unquoted = false; // in unquoted_ rather than in the line
    };

    static std::size_t SkipBlanks(std::string_view line, std::size_t pos) {
        while (pos < line.size() && (line[pos] == ' ' || line[pos] == '\t')) {
            ++pos;
        }
        return pos;
    }

    // A quoted text from just after its opening quote; the position after its closing
    // quote, or npos when it is not closed.
    std::size_t Quoted(std::string_view line, std::size_t pos, Span& span) {
        span.quoted = true;
        span.begin = pos;
        while (pos < line.size()) {
            if (line[pos] != '"') {
                ++pos;
                continue;
            }
            if (pos + 1 < line.size() && line[pos + 1] == '"') {
                // A doubled quote stands for one: the text is copied out without them.
                const std::size_t start = unquoted_.size();
                std::size_t at = span.begin;
                while (at < line.size()) {
                    if (line[at] == '"') {
                        if (at + 1 < line.size() && line[at + 1] == '"') {
                            unquoted_ += '"';
                            at += 2;
                            continue;
                        }
                        span.unquoted = true;
                        span.begin = start;
                        span.length = unquoted_.size() - start;
                        return at + 1;
                    }
                    unquoted_ += line[at++];
                }
                return std::string_view::npos;
            }
            span.length = pos - span.begin;
            return pos + 1;
        }
        return std::string_view::npos;
    }

    bool SplitSpans(std::string_view line, std::string& problem) {
        std::size_t pos = 0;
        while (true) {
            Span span;
            pos = SkipBlanks(line, pos);
            if (pos < line.size() && line[pos] == '"') {
                pos = Quoted(line, pos + 1, span);
                if (pos == std::string_view::npos) {
                    problem = "a quoted text is not closed";
                    return false;
                }
                pos = SkipBlanks(line, pos);
                if (pos < line.size() && line[pos] != ',') {
                    problem = "text follows a closing quote";
                    return false;
                }
            } else {
                const std::size_t comma = line.find(',', pos);
                std::size_t end = comma == std::string_view::npos ? line.size() : comma;
                span.begin = pos;
                pos = end;
                while (end > span.begin && (line[end - 1] == ' ' || line[end - 1] == '\t')) {
                    --end;
                }
                span.length = end - span.begin;
            }
            spans_.push_back(span);
            if (pos >= line.size()) {
                return true;
            }
            ++pos; // the comma
        }
    }

    std::vector<Span> spans_;
    std::string unquoted_;
};

class LineReader {
  public:
    explicit LineReader(std::string_view text) : text_(text) {}

    // The next line without its CR LF or LF; nullopt at the end of the text.
    std::optional<std::string_view> Next() {
        if (pos_ >= text_.size()) {
            return std::nullopt;
        }
        ++number_;
        const std::size_t lf = text_.find('\n', pos_);
        const std::size_t end = lf == std::string_view::npos ? text_.size() : lf;
        std::string_view line = text_.substr(pos_, end - pos_);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        pos_ = lf == std::string_view::npos ? text_.size() : lf + 1;
        return line;
    }

    int Number() const { return number_; }

  private:
    std::string_view text_;
    std::size_t pos_ = 0;
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
    Subject WithField(std::string_view which) const { return Subject{name, slot, which}; }
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
    const std::vector<Field>& Fields(const Subject& what, std::size_t expected) {
        const auto line = lines_.Next();
        if (!line) {
            throw Stop{lines_.Number() + 1, "the file ends where " + what.Text() +
                                                " should follow (line " +
                                                std::to_string(lines_.Number() + 1) + ")"};
        }
        std::string problem;
        if (!splitter_.Split(*line, fields_, problem)) {
            Fail(what.Text() + ": " + problem);
        }
        if (fields_.size() != expected) {
            Fail(what.Text() + " needs " + std::to_string(expected) + " field" +
                 (expected == 1 ? "" : "s") + ", found " + std::to_string(fields_.size()));
        }
        return fields_;
    }

    float Number(const Field& field, const Subject& what) const {
        const auto value = field.quoted ? std::nullopt : ParseFloat(field.text);
        if (!value) {
            Fail(what.Text() + " is not a finite single-precision number: \"" +
                 Abbreviated(field.text) + "\"");
        }
        return *value;
    }

    std::int16_t Count(const std::string& what, int capacity) {
        const std::string subject = "the " + what;
        const auto& fields = Fields(Subject{subject}, 1);
        const auto value = fields[0].quoted ? std::nullopt : ParseInteger(fields[0].text);
        if (!value) {
            Fail("the " + what + " is not a whole number: \"" + Abbreviated(fields[0].text) + "\"");
        }
        if (*value < 0 || *value > capacity) {
            Fail("the " + what + " " + std::to_string(*value) + " is outside 0.." +
                 std::to_string(capacity));
        }
        return static_cast<std::int16_t>(*value);
    }

    static std::string Abbreviated(std::string_view text) {
        return text.size() <= 40 ? std::string(text) : std::string(text.substr(0, 40)) + "...";
    }

    void ReadWires() {
        const std::int16_t count = Count("wire count", kMaxWires);
        circuit_.NumWires = count;
        for (int slot = 1; slot <= count; ++slot) {
            const Subject what{"wire", slot};
            const auto& fields = Fields(what, 4);
            Wire wire;
            wire.X1 = Number(fields[0], what.WithField("X1"));
            wire.Y1 = Number(fields[1], what.WithField("Y1"));
            wire.X2 = Number(fields[2], what.WithField("X2"));
            wire.Y2 = Number(fields[3], what.WithField("Y2"));
            wire.Used = kTrue;
            circuit_.Wires[slot] = wire;
        }
    }

    void ReadElements() {
        const std::int16_t count = Count("element count", kMaxElements);
        for (int slot = 1; slot <= count; ++slot) {
            const Subject what{"element", slot};
            const auto& fields = Fields(what, 4);
            Element element;
            element.X = Number(fields[0], what.WithField("X"));
            element.Y = Number(fields[1], what.WithField("Y"));
            const auto kind = fields[2].quoted ? std::nullopt : ParseInteger(fields[2].text);
            if (!kind || *kind < 1 || *kind > 10) {
                Fail(what.Text() + " has kind \"" + Abbreviated(fields[2].text) +
                     "\"; kinds run from 1 to 10");
            }
            element.Kind = static_cast<std::int16_t>(*kind);
            element.Value = Number(fields[3], what.WithField("value"));
            circuit_.Elements[slot] = element;
            // Raised as each element arrives, so that every walk sees what was read even
            // when the file stops early.
            if (slot > circuit_.NumElements) {
                circuit_.NumElements = static_cast<std::int16_t>(slot);
            }
        }
    }

    void ReadNodes() {
        const std::int16_t count = Count("node count", kMaxNodes);
        circuit_.NumNodes = 0;
        for (int slot = 1; slot <= count; ++slot) {
            const Subject what{"node", slot};
            const auto& fields = Fields(what, 4);
            NodeLabel node;
            // The name is written twice; the second copy is the one that counts.
            node.Name = std::string(fields[1].text);
            node.X = Number(fields[2], what.WithField("X"));
            node.Y = Number(fields[3], what.WithField("Y"));
            circuit_.NodeLabels[slot] = node;
            circuit_.NumNodes = static_cast<std::int16_t>(slot);
        }
    }

    Circuit& circuit_;
    LineReader lines_;
    FieldSplitter splitter_;
    std::vector<Field> fields_;
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
    namespace fs = std::filesystem;
    const std::string text = CircuitFileText(circuit);
    std::random_device random;
    const fs::path target(path);
    const fs::path temporary = target.parent_path() / ("." + target.filename().string() +
                                                       ".saving-" + std::to_string(random()));
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        if (!out) {
            return SaveResult{false, "The folder cannot be written to."};
        }
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
        out.close();
        if (!out) {
            std::error_code ignored;
            fs::remove(temporary, ignored);
            return SaveResult{false, "The file could not be written completely."};
        }
    }
    std::error_code error;
    fs::rename(temporary, target, error);
    if (error) {
        std::error_code ignored;
        fs::remove(temporary, ignored);
        return SaveResult{false, "The file could not be replaced: " + error.message() + "."};
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
    Circuit saved;
    if (!LoadFromIniFile(saved, currentFileName).complete) {
        return true;
    }
    int fileSlot = 0;
    if (CountLiveWires(circuit) != saved.NumWires) {
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
