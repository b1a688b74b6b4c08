#include "ui/about_box.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

using ampora::ui::AboutBox;

class AboutBoxTest : public QObject {
    Q_OBJECT

  private slots:
    void showsTheCaptionPictureNameAndVersion() {
        AboutBox box;
        box.show();
        QCOMPARE(box.windowTitle(), QStringLiteral("About DC Ampora"));
        QVERIFY(box.isModal());
        auto* picture = box.findChild<QLabel*>(QStringLiteral("picIcon"));
        QVERIFY(picture != nullptr);
        const QImage image = picture->pixmap().toImage();
        QCOMPARE(image.size(), QSize(64, 64));
        // The drawing, not an empty square: the centre of the icon is painted.
        QVERIFY(qAlpha(image.pixel(32, 32)) > 0);
        QCOMPARE(box.findChild<QLabel*>(QStringLiteral("lblProductName"))->text(),
                 QStringLiteral("DC Ampora"));
        QCOMPARE(box.findChild<QLabel*>(QStringLiteral("lblVersion"))->text(),
                 QStringLiteral("Version ") + QStringLiteral(AMPORA_TEST_VERSION));
    }

    void itsOneButtonClosesTheBox() {
        QWidget owner;
        owner.show();
        bool clicked = false;
        // The box runs its own event loop; the click has to come from inside it.
        QTimer::singleShot(0, [&clicked] {
            auto* box = qobject_cast<AboutBox*>(QApplication::activeModalWidget());
            QVERIFY(box != nullptr);
            const auto buttons = box->findChildren<QPushButton*>();
            QCOMPARE(buttons.size(), 1);
            QCOMPARE(buttons.at(0)->objectName(), QStringLiteral("Command1"));
            QCOMPARE(buttons.at(0)->text(), QStringLiteral("OK"));
            QTest::mouseClick(buttons.at(0), Qt::LeftButton);
            clicked = true;
        });
        ampora::ui::ShowAboutBox(&owner);
        QVERIFY(clicked);
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }
};

QTEST_MAIN(AboutBoxTest)
#include "about_box_test.moc"
