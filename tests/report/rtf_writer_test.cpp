#include "report/html_writer.h"
#include "report/rich_text_document.h"
#include "report/rtf_writer.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

namespace ampora {
namespace {

// A title, a heading in bold, body text and a light blue word, as the report writes them.
RichTextDocument SmallReport() {
    RichTextDocument document;
    const auto add = [&](const TextFormat& format, const char* text) {
        document.SetFormat(format);
        document.InsertText(text);
    };
    add({.Bold = true, .FontName = "Times New Roman", .FontSize = 18}, "Ampora\r\n");
    add({.Bold = true, .FontName = "Times New Roman", .FontSize = 12}, "The circuit:");
    add({.FontName = "Times New Roman", .FontSize = 12}, "\r\n\r\n\tsee ");
    add({.Italic = true,
         .Underline = true,
         .Colour = 9,
         .FontName = "Times New Roman",
         .FontSize = 12},
        "here");
    return document;
}

// Checked by hand in tests/data/report/rtf_writer.txt: a small report written whole; special
// characters escaped, other fonts joining the table; pictures as PNG hex, 64 bytes a line,
// with their size in twips; pictures wider than the page's column scaled down whole (the
// column of A4 with inch margins is 9026 twips; the tab takes 720 and a twip is kept spare,
// leaving 8305 twips, 553 pixels and a third, beside it); a selection keeping only its
// characters with their formats; the same report as HTML.
TEST(RtfWriter, DocumentsAreWrittenAsHandChecked) {
    std::string dump = "== a small report\n" + RtfText(SmallReport());
    RichTextDocument special;
    TextFormat format;
    format.FontName = "DejaVu Sans";
    format.FontSize = 8.25f;
    special.SetFormat(format);
    special.InsertText("{a}\\b 12 \xCE\xA9 \xE2\x86\x91\xE2\x86\x93\xE2\x86\x90\xE2\x86\x92 "
                       "\xCE\xB1\xCF\x80 \xF0\x9F\x94\x8B\x01\xFF.");
    dump += "== special characters and another font\n" + RtfText(special);
    RichTextDocument picture;
    picture.InsertText("\t");
    picture.InsertPicture(std::string("\x89PNG\r\n\x1A\n", 8) + std::string(60, '\xAB'), 40, 20);
    picture.InsertText("\r\n");
    dump += "== a picture of 68 bytes\n" + RtfText(picture);
    for (const auto& [width, height] :
         std::vector<std::pair<int, int>>{{553, 100}, {554, 100}, {2000, 500}, {3000, 30}}) {
        RichTextDocument wide;
        wide.InsertPicture("\x89PNG", width, height);
        const std::string rtf = RtfText(wide);
        const std::size_t at = rtf.find("{\\pict");
        dump += "== a picture " + std::to_string(width) + " x " + std::to_string(height) + "\n" +
                rtf.substr(at, rtf.find('\n', at) - at) + "\n";
    }
    const std::string whole = RtfText(SmallReport());
    // "Ampora\n" "The circuit:" "\n\n\tsee " "here": the selection runs from "circuit" to "he".
    dump +=
        "== characters 11 to 28\n" + RtfText(SmallReport(), 11, 28).substr(whole.find("\\pard"));
    dump += "== characters past the end\n" +
            RtfText(SmallReport(), 100, 200).substr(whole.find("\\pard"));
    RichTextDocument html = SmallReport();
    html.InsertText(" <&>");
    html.InsertPicture("\x89PNG", 3, 4);
    dump += "== as HTML\n" + HtmlText(html, "Report & more");
    EXPECT_EQ(dump, test::ExpectedText("report/rtf_writer.txt", dump));
    EXPECT_EQ(picture.Length(), 3u);
}

TEST(RichTextDocument, LengthCountsCharactersWithABreakOrAPictureAsOne) {
    RichTextDocument document;
    document.InsertText("a\xCE\xA9\r");
    document.InsertText("\nb\rc\nd\t");
    document.InsertPicture("png", 1, 1);
    document.InsertPicture("", 1, 1);
    EXPECT_EQ(document.Length(), 10u);
    ASSERT_EQ(document.Runs().size(), 2u);
    EXPECT_EQ(document.Runs()[0].Text, "a\xCE\xA9\nb\nc\nd\t");
}

TEST(RichTextDocument, PositionsCountAsATextBoxCountsThemAlsoPastTheBasicPlane) {
    // A path with an emoji (two UTF-16 units), then a heading: a selection made in the box
    // by its positions takes exactly the characters shown selected.
    RichTextDocument document;
    document.InsertText("/home/\xF0\x9F\x94\x8B/c.amq\r\n");
    TextFormat bold;
    bold.Bold = true;
    document.SetFormat(bold);
    document.InsertText("The circuit:");
    EXPECT_EQ(document.Length(), 27u);
    struct Case {
        std::size_t start, end;
        const char* text;
    };
    const Case cases[] = {
        {6, 8, "\xF0\x9F\x94\x8B"}, {0, 14, "/home/\xF0\x9F\x94\x8B/c.amq"},
        {8, 15, "/c.amq\n"},        {15, 27, "The circuit:"},
        {19, 26, "circuit"},
    };
    for (const Case& c : cases) {
        const RichTextDocument slice = document.Slice(c.start, c.end);
        std::string text;
        for (const RichTextRun& run : slice.Runs()) {
            text += run.Text;
        }
        EXPECT_EQ(text, c.text) << c.start << ".." << c.end;
        EXPECT_EQ(slice.Length(), c.end - c.start);
    }
}

TEST(RtfWriter, AnIndependentReaderFindsTheText) {
    if (std::system("command -v unrtf > /dev/null 2>&1") != 0) {
        GTEST_SKIP() << "unrtf is not installed";
    }
    test::TempDir folder;
    RichTextDocument document = SmallReport();
    document.InsertText("\r\nR = 10 \xCE\xA9 \xE2\x86\x91 {approx} \\ done");
    document.InsertPicture(std::string("\x89PNG\r\n\x1A\n", 8), 2, 2);
    test::WriteBytes(folder / "report.rtf", RtfText(document));
    // unrtf writes the pictures it finds into the folder it runs in: the temporary one.
    const std::string command = "cd \"" + folder.Path().string() +
                                "\" && unrtf --html report.rtf > report.html 2>/dev/null";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const std::string text = test::ReadBytes(folder / "report.html");
    for (const std::string_view expected :
         {"Ampora", "The circuit:", "see ", "<font color=\"#0000ff\">here",
          "R = 10 &Omega; &uarr; {approx} \\ done"}) {
        EXPECT_NE(text.find(expected), std::string::npos) << expected << " in\n" << text;
    }
    EXPECT_EQ(test::ReadBytes(folder / "pict001.png").substr(0, 4), "\x89PNG");
}

} // namespace
} // namespace ampora
