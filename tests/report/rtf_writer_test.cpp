#include "report/html_writer.h"
#include "report/rich_text_document.h"
#include "report/rtf_writer.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

namespace ampora {
namespace {

const std::string kColourTable =
    "{\\colortbl\\red0\\green0\\blue0;\\red0\\green0\\blue128;\\red0\\green128\\blue0;"
    "\\red0\\green128\\blue128;\\red128\\green0\\blue0;\\red128\\green0\\blue128;"
    "\\red128\\green128\\blue0;\\red192\\green192\\blue192;\\red128\\green128\\blue128;"
    "\\red0\\green0\\blue255;\\red0\\green255\\blue0;\\red0\\green255\\blue255;"
    "\\red255\\green0\\blue0;\\red255\\green0\\blue255;\\red255\\green255\\blue0;"
    "\\red255\\green255\\blue255;}\n";

// A title, a heading in bold, body text and a light blue word, as the report writes them.
RichTextDocument SmallReport() {
    RichTextDocument document;
    TextFormat format;
    format.FontName = "Times New Roman";
    format.FontSize = 18;
    format.Bold = true;
    document.SetFormat(format);
    document.InsertText("Ampora\r\n");
    format.FontSize = 12;
    document.SetFormat(format);
    document.InsertText("The circuit:");
    format.Bold = false;
    document.SetFormat(format);
    document.InsertText("\r\n\r\n\tsee ");
    format.Colour = 9;
    format.Italic = true;
    format.Underline = true;
    document.SetFormat(format);
    document.InsertText("here");
    return document;
}

TEST(RtfWriter, ASmallReportIsWrittenWhole) {
    EXPECT_EQ(RtfText(SmallReport()),
              "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1\n"
              "{\\fonttbl{\\f0\\fswiss Arial;}{\\f1\\froman Times New Roman;}"
              "{\\f2\\fmodern Courier New;}}\n" +
                  kColourTable +
                  "\\paperw11906\\paperh16838\\margl1440\\margr1440\\margt1440\\margb1440"
                  "\\deftab720\n"
                  "\\pard\\plain\n"
                  "{\\f1\\fs36\\b\\cf0 Ampora\\par\n}\n"
                  "{\\f1\\fs24\\b\\cf0 The circuit:}\n"
                  "{\\f1\\fs24\\cf0 \\par\n\\par\n\\tab see }\n"
                  "{\\f1\\fs24\\i\\ul\\cf9 here}\n"
                  "}\n");
}

TEST(RtfWriter, SpecialCharactersAreEscapedAndOtherFontsJoinTheTable) {
    RichTextDocument document;
    TextFormat format;
    format.FontName = "DejaVu Sans";
    format.FontSize = 8.25f;
    document.SetFormat(format);
    document.InsertText("{a}\\b 12 \xCE\xA9 \xE2\x86\x91\xE2\x86\x93\xE2\x86\x90\xE2\x86\x92 "
                        "\xCE\xB1\xCF\x80 \xF0\x9F\x94\x8B\x01\xFF.");
    const std::string rtf = RtfText(document);
    EXPECT_NE(rtf.find("{\\f3\\fnil DejaVu Sans;}"), std::string::npos);
    EXPECT_NE(rtf.find("{\\f3\\fs17\\cf0 \\{a\\}\\\\b 12 \\u937? \\u8593?\\u8595?\\u8592?\\u8594? "
                       "\\u945?\\u960? \\u-10179?\\u-8949?\\u-3?.}\n"),
              std::string::npos)
        << rtf;
}

TEST(RtfWriter, PicturesAreEmbeddedAsPngHexWithTheirSizeInTwips) {
    RichTextDocument document;
    document.InsertText("\t");
    document.InsertPicture(std::string("\x89PNG\r\n\x1A\n", 8) + std::string(60, '\xAB'), 40, 20);
    document.InsertText("\r\n");
    const std::string rtf = RtfText(document);
    std::string bytes;
    for (int i = 0; i < 56; ++i) {
        bytes += "ab";
    }
    // 64 bytes to a line.
    const std::string expected = "{\\f0\\fs20\\cf0 \\tab }\n"
                                 "{\\f0\\fs20\\cf0 {\\pict\\pngblip\\picw40\\pich20"
                                 "\\picwgoal600\\pichgoal300\n"
                                 "89504e470d0a1a0a" +
                                 bytes +
                                 "\nabababab\n}}\n"
                                 "{\\f0\\fs20\\cf0 \\par\n}\n}\n";
    EXPECT_NE(rtf.find(expected), std::string::npos) << rtf;
    EXPECT_EQ(document.Length(), 3u);
}

TEST(RtfWriter, APictureWiderThanThePageColumnIsScaledDownWhole) {
    // The column of A4 with inch margins is 9026 twips; the tab takes 720 and a twip is
    // kept spare, leaving 8305 twips (553 pixels and a third) beside the tab.
    struct Case {
        int width, height;
        const char* size;
    };
    const Case cases[] = {
        {553, 100, "\\picw553\\pich100\\picwgoal8295\\pichgoal1500"},
        {554, 100, "\\picw554\\pich100\\picwgoal8305\\pichgoal1499"},
        {2000, 500, "\\picw2000\\pich500\\picwgoal8305\\pichgoal2076"},
        {3000, 30, "\\picw3000\\pich30\\picwgoal8305\\pichgoal83"},
    };
    for (const Case& c : cases) {
        RichTextDocument document;
        document.InsertPicture("\x89PNG", c.width, c.height);
        EXPECT_NE(RtfText(document).find(std::string("{\\pict\\pngblip") + c.size + "\n"),
                  std::string::npos)
            << c.width << " x " << c.height << "\n"
            << RtfText(document);
    }
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

TEST(RtfWriter, ASelectionKeepsOnlyItsCharactersWithTheirFormats) {
    // "Ampora\n" "The circuit:" "\n\n\tsee " "here": the selection runs from "circuit" to "he".
    EXPECT_EQ(RtfText(SmallReport(), 11, 28).substr(RtfText(SmallReport()).find("\\pard")),
              "\\pard\\plain\n"
              "{\\f1\\fs24\\b\\cf0 circuit:}\n"
              "{\\f1\\fs24\\cf0 \\par\n\\par\n\\tab see }\n"
              "{\\f1\\fs24\\i\\ul\\cf9 he}\n"
              "}\n");
    EXPECT_EQ(RtfText(SmallReport(), 100, 200).substr(RtfText(SmallReport()).find("\\pard")),
              "\\pard\\plain\n}\n");
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

TEST(HtmlWriter, RunsBecomeStyledSpansAndPicturesDataUris) {
    RichTextDocument document = SmallReport();
    document.InsertText(" <&>");
    document.InsertPicture("\x89PNG", 3, 4);
    EXPECT_EQ(HtmlText(document, "Report & more"),
              "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n"
              "<title>Report &amp; more</title>\n</head>\n<body>\n"
              "<div style=\"white-space: pre-wrap; tab-size: 48px\">"
              "<span style=\"font-family: 'Times New Roman'; font-size: 18pt; font-weight: "
              "bold\">Ampora\n</span>"
              "<span style=\"font-family: 'Times New Roman'; font-size: 12pt; font-weight: "
              "bold\">The circuit:</span>"
              "<span style=\"font-family: 'Times New Roman'; font-size: 12pt\">\n\n\tsee </span>"
              "<span style=\"font-family: 'Times New Roman'; font-size: 12pt; font-style: "
              "italic; text-decoration: underline; color: #0000ff\">here &lt;&amp;&gt;</span>"
              "<img src=\"data:image/png;base64,iVBORw==\" width=\"3\" height=\"4\" "
              "style=\"max-width: calc(100% - 52px); height: auto\" alt=\"\">"
              "</div>\n</body>\n</html>\n");
}

} // namespace
} // namespace ampora
