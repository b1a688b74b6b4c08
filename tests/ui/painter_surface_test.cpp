#include "report/equation_drawing.h"
#include "report/markup_printer.h"
#include "report/palette.h"
#include "ui/painter_surface.h"

#include <QtTest>

namespace {

// Rows and columns of the image that hold anything darker than white.
QRect InkBounds(const QImage& image) {
    QRect bounds;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 200) {
                bounds |= QRect(x, y, 1, 1);
            }
        }
    }
    return bounds;
}

QImage WhiteImage(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

} // namespace

class PainterSurfaceTest : public QObject {
    Q_OBJECT

  private slots:
    void textHangsBelowThePrintPositionAndAdvancesByItsWidth() {
        QImage image = WhiteImage(200, 60);
        {
            ampora::ui::PainterSurface surface(image);
            surface.SetCurrentX(10);
            surface.SetCurrentY(20);
            const float width = surface.TextWidth("Hello");
            surface.Print("Hello");
            QCOMPARE(surface.CurrentX(), 10 + width);
            QCOMPARE(surface.CurrentY(), 20.0f);
        }
        const QRect ink = InkBounds(image);
        QVERIFY(ink.top() >= 20);
        QVERIFY(ink.top() <= 26);
        QVERIFY(ink.left() >= 10 && ink.left() <= 12);
        QVERIFY(ink.bottom() < 40);
    }

    void pointSizesBecomePixelsAtTheLogicalDpi() {
        QImage screen = WhiteImage(10, 10);
        QImage print = WhiteImage(10, 10);
        ampora::ui::PainterSurface at96(screen, 96);
        ampora::ui::PainterSurface at72(print, 72);
        const float ratio = at96.TextWidth("Nodal analysis") / at72.TextWidth("Nodal analysis");
        QVERIFY2(std::abs(ratio - 96.0f / 72.0f) < 0.05f, QByteArray::number(ratio));
    }

    void aLineAlongARowCoversWholePixels() {
        QImage image = WhiteImage(50, 30);
        {
            ampora::ui::PainterSurface surface(image);
            surface.DrawLine(5, 10.3f, 45, 10.3f);
        }
        QCOMPARE(InkBounds(image), QRect(5, 10, 40, 1));
    }

    void symbolTextIsDrawnInTheFaceUsedBeforeIt() {
        QImage image = WhiteImage(10, 10);
        ampora::ui::PainterSurface surface(image);
        surface.SetFontName("Times New Roman");
        const QString family = surface.CurrentFont().family();
        surface.SetFontName("Symbol");
        QCOMPARE(surface.FontName(), std::string("Symbol"));
        QCOMPARE(surface.CurrentFont().family(), family);
    }

    void colouredMarkupIsPaintedInThePaletteColour() {
        QImage image = WhiteImage(120, 40);
        {
            ampora::ui::PainterSurface surface(image);
            ampora::MarkupState state;
            std::string text = "@n@b@cWWW";
            ampora::PrintMarkup(surface, state, 1, 0, 0, text);
        }
        bool blue = false;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                blue = blue || image.pixel(x, y) == (0xFF000000u | ampora::QBColor(9));
            }
        }
        QVERIFY(blue);
    }

    // The sample picture a person looks at: set AMPORA_EQUATION_SAMPLE to a PNG path.
    void equationsStackInsideThePictureTheyReport() {
        const std::vector<std::string> equations = {"(Va-Vb)/10 + (Va-Vc+2)/5 - 0.5 = 0",
                                                    "(Va-Vd-5)/10",
                                                    " = 0",
                                                    "(1/10+1/5)*Va-(1/10)*Vb-(1/5)*Vc=-2/5+0.5",
                                                    "Vb=Va+5",
                                                    "Vb-Va=-2.5",
                                                    "(V1-0)/1000 + (V1-V2)/2.2E+03 = 0",
                                                    "not an equation @ all"};
        for (const std::int16_t fontIndex : {1, 2, 3, 4}) {
            QImage image = WhiteImage(640, 480);
            float bottom = 0;
            float widest = 0;
            {
                ampora::ui::PainterSurface surface(image);
                ampora::MarkupState state;
                state.FontIndex = fontIndex;
                surface.SetCurrentX(8);
                surface.SetCurrentY(8);
                for (const std::string& text : equations) {
                    const ampora::EquationExtent extent =
                        ampora::DrawEquation(surface, state, text);
                    widest = std::max(widest, extent.Width);
                    surface.SetCurrentY(surface.CurrentY() + 12);
                }
                bottom = surface.CurrentY();
            }
            const QRect ink = InkBounds(image);
            QVERIFY(ink.top() >= 8);
            QVERIFY2(ink.bottom() <= bottom, qPrintable(QString::number(ink.bottom())));
            QVERIFY(ink.right() <= 8 + widest + 1);
            const QByteArray sample = qgetenv("AMPORA_EQUATION_SAMPLE");
            if (!sample.isEmpty()) {
                const QImage picture = image.copy(0, 0, int(8 + widest + 8), int(bottom));
                picture.save(QString::fromUtf8(sample) + QString::number(fontIndex) + ".png");
            }
        }
    }
};

QTEST_MAIN(PainterSurfaceTest)
#include "painter_surface_test.moc"
