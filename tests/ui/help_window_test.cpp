#include "ui/help_window.h"
#include "ui/install_paths.h"

#include <QApplication>
#include <QImage>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QtTest>

using ampora::ui::HelpWindow;

namespace {

const QString IndexTopic = QStringLiteral("index.htm");
const QString TheoryTopic = QStringLiteral("dc cct help/theory.htm");

// Every link (or, with images, every picture) of the page on screen, in reading order, as
// written in the page.
QStringList OnPage(const QTextBrowser& browser, bool images = false) {
    QStringList found;
    for (QTextBlock block = browser.document()->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            if (images && format.isImageFormat()) {
                found << format.toImageFormat().name();
            } else if (!images && format.isAnchor() && !format.anchorHref().isEmpty()) {
                found << format.anchorHref();
            }
        }
    }
    return found;
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

    void everyLinkOfBothPagesLeadsToAnExistingPageOrAnchor() {
        HelpWindow window(ampora::ui::HelpDir());
        for (const QString& topic : {IndexTopic, TheoryTopic}) {
            window.ShowTopic(topic);
            const QStringList links = OnPage(*window.Browser());
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
            const QStringList images = OnPage(*window.Browser(), true);
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
