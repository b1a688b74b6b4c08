#include "ui/help_window.h"
#include "ui/install_paths.h"

#include <QApplication>
#include <QImage>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QToolButton>
#include <QtTest>

using ampora::ui::HelpWindow;

namespace {

const QString IndexTopic = QStringLiteral("index.htm");
const QString TheoryTopic = QStringLiteral("dc cct help/theory.htm");

// Every link of the page on screen, in reading order, as written in the page.
QStringList LinksOnPage(const QTextBrowser& browser) {
    QStringList links;
    for (QTextBlock block = browser.document()->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            if (format.isAnchor() && !format.anchorHref().isEmpty()) {
                links << format.anchorHref();
            }
        }
    }
    return links;
}

// Clicks, as a user would, the first link of the page whose address ends with target.
bool ClickLink(QTextBrowser& browser, const QString& target) {
    for (QTextBlock block = browser.document()->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (!fragment.charFormat().anchorHref().endsWith(target)) {
                continue;
            }
            QTextCursor cursor(browser.document());
            cursor.setPosition(fragment.position() + fragment.length() / 2);
            browser.setTextCursor(cursor);
            browser.ensureCursorVisible();
            const QPoint point = browser.cursorRect(cursor).center();
            QTest::mouseClick(browser.viewport(), Qt::LeftButton, {}, point);
            return true;
        }
    }
    return false;
}

QStringList ImagesOnPage(const QTextBrowser& browser) {
    QStringList images;
    for (QTextBlock block = browser.document()->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            if (format.isImageFormat()) {
                images << format.toImageFormat().name();
            }
        }
    }
    return images;
}

QString ShownFile(const QTextBrowser& browser) {
    return browser.source().toLocalFile();
}

} // namespace

class HelpWindowTest : public QObject {
    Q_OBJECT

  private slots:
    void theProgramPageLinksToTheTheoryPageAndBack() {
        HelpWindow window(ampora::ui::HelpDir());
        window.show();
        window.ShowTopic(IndexTopic);
        QTextBrowser& browser = *window.Browser();
        QVERIFY(ShownFile(browser).endsWith(QStringLiteral("/help/index.htm")));
        QCOMPARE(window.windowTitle(), QStringLiteral("DC Ampora Help - Help with the program"));

        QVERIFY(ClickLink(browser, QStringLiteral("theory.htm")));
        QVERIFY(ShownFile(browser).endsWith(QStringLiteral("/help/dc cct help/theory.htm")));
        QCOMPARE(window.windowTitle(),
                 QStringLiteral("DC Ampora Help - Help with electricity and math"));

        QVERIFY(ClickLink(browser, QStringLiteral("index.htm")));
        QVERIFY(ShownFile(browser).endsWith(QStringLiteral("/help/index.htm")));
    }

    void backForwardAndHomeMoveThroughThePagesSeen() {
        HelpWindow window(ampora::ui::HelpDir());
        window.show();
        window.ShowTopic(TheoryTopic);
        auto* back = window.findChildren<QToolButton*>().at(0);
        auto* forward = window.findChildren<QToolButton*>().at(1);
        auto* home = window.findChildren<QToolButton*>().at(2);
        QCOMPARE(back->text(), QStringLiteral("Back"));
        QCOMPARE(forward->text(), QStringLiteral("Forward"));
        QCOMPARE(home->text(), QStringLiteral("Home"));
        QVERIFY(!back->isEnabled());

        QTest::mouseClick(home, Qt::LeftButton);
        QVERIFY(ShownFile(*window.Browser()).endsWith(QStringLiteral("/help/index.htm")));
        QVERIFY(back->isEnabled());
        QVERIFY(!forward->isEnabled());

        QTest::mouseClick(back, Qt::LeftButton);
        QVERIFY(ShownFile(*window.Browser()).endsWith(QStringLiteral("/theory.htm")));
        QVERIFY(forward->isEnabled());
        QTest::mouseClick(forward, Qt::LeftButton);
        QVERIFY(ShownFile(*window.Browser()).endsWith(QStringLiteral("/help/index.htm")));
    }

    void everyLinkOfBothPagesLeadsToAnExistingPageOrAnchor() {
        HelpWindow window(ampora::ui::HelpDir());
        for (const QString& topic : {IndexTopic, TheoryTopic}) {
            window.ShowTopic(topic);
            const QStringList links = LinksOnPage(*window.Browser());
            QVERIFY2(!links.isEmpty(), qPrintable(topic));
            const QUrl page = window.Browser()->source();
            for (const QString& link : links) {
                const QUrl target = page.resolved(QUrl(link));
                QVERIFY2(QFileInfo(target.toLocalFile()).isFile(), qPrintable(topic + ": " + link));
                if (target.hasFragment()) {
                    window.Browser()->setSource(target);
                    QVERIFY2(window.Browser()->document()->toHtml().contains(
                                 QStringLiteral("name=\"") + target.fragment() + "\""),
                             qPrintable(topic + ": " + link));
                    window.ShowTopic(topic);
                }
            }
        }
    }

    void everyPictureOfBothPagesLoads() {
        HelpWindow window(ampora::ui::HelpDir());
        for (const QString& topic : {IndexTopic, TheoryTopic}) {
            window.ShowTopic(topic);
            const QStringList images = ImagesOnPage(*window.Browser());
            QVERIFY2(images.size() >= 2, qPrintable(topic));
            for (const QString& name : images) {
                const QVariant data =
                    window.Browser()->loadResource(QTextDocument::ImageResource, QUrl(name));
                const QImage image = QImage::fromData(data.toByteArray());
                QVERIFY2(!image.isNull(), qPrintable(topic + ": " + name));
                QVERIFY2(image.width() > 100, qPrintable(topic + ": " + name));
            }
        }
    }

    void aMissingHelpFolderShowsAMessageInTheWindow() {
        QTemporaryDir empty;
        const QString helpDir = empty.path() + "/help";
        HelpWindow window(helpDir);
        window.show();
        window.ShowTopic(TheoryTopic);
        const QString text = window.Browser()->toPlainText();
        QVERIFY2(text.startsWith(QStringLiteral("Help page not found")), qPrintable(text));
        QVERIFY2(text.contains(helpDir + "/dc cct help/theory.htm"), qPrintable(text));
        QCOMPARE(window.windowTitle(), QStringLiteral("DC Ampora Help"));
    }

    void theMenuReusesTheOneHelpWindow() {
        QWidget owner;
        ampora::ui::ShowHelpTopic(&owner, IndexTopic);
        ampora::ui::ShowHelpTopic(&owner, TheoryTopic);
        const auto windows = owner.findChildren<HelpWindow*>();
        QCOMPARE(windows.size(), 1);
        QVERIFY(windows.at(0)->isVisible());
        QVERIFY(ShownFile(*windows.at(0)->Browser()).endsWith(QStringLiteral("/theory.htm")));
    }
};

QTEST_MAIN(HelpWindowTest)
#include "help_window_test.moc"
