#include "dialog_answerer.h"
#include "ui/input_dialog.h"

#include <QtTest>

using ampora::test::DialogAnswerer;
using ampora::ui::InputBox2;

class InputDialogTest : public QObject {
    Q_OBJECT

  private slots:
    void enterAnswersOkWithTheTypedTextReplacingTheSelectedDefault() {
        DialogAnswerer answers;
        answers.Type(QStringLiteral("47"));
        QCOMPARE(InputBox2(nullptr, QStringLiteral("Enter the resistance in ohms:"),
                           QStringLiteral("0"), QPoint(100, 100)),
                 QStringLiteral("47"));
        QCOMPARE(answers.seen, QStringList{QStringLiteral("Enter the resistance in ohms: [0]")});
    }
    void okAtOnceReturnsTheDefaultAndEscapeReturnsNothing() {
        DialogAnswerer answers;
        answers.Type(QString());
        answers.Escape();
        QCOMPARE(InputBox2(nullptr, QStringLiteral("p"), QStringLiteral("12.5"), QPoint()),
                 QStringLiteral("12.5"));
        QCOMPARE(InputBox2(nullptr, QStringLiteral("p"), QStringLiteral("12.5"), QPoint()),
                 QString());
    }
    void aPositionOffTheScreenIsBroughtBackOntoIt() {
        DialogAnswerer answers;
        QPoint where;
        answers.Type(QString());
        QTimer::singleShot(0, [&where] {
            if (QWidget* dialog = QApplication::activeModalWidget()) {
                where = dialog->pos();
            }
        });
        InputBox2(nullptr, QStringLiteral("p"), QStringLiteral("1"), QPoint(50000, 50000));
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY2(screen.contains(where),
                 qPrintable(QString("at %1,%2").arg(where.x()).arg(where.y())));
    }
};

QTEST_MAIN(InputDialogTest)
#include "input_dialog_test.moc"
