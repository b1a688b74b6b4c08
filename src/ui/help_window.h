#pragma once
// The program's own help viewer: one window for the help pages shipped with the program,
// with the Back / Forward / Home buttons a student expects from a browser.

#include <QString>
#include <QWidget>

class QTextBrowser;
class QToolButton;

namespace ampora::ui {

class HelpWindow : public QWidget {
    Q_OBJECT

  public:
    // helpDir holds index.htm (the Home page) and the pages it links to.
    explicit HelpWindow(const QString& helpDir, QWidget* parent = nullptr);

    // topic is a path relative to the help folder, such as "dc cct help/theory.htm".
    void ShowTopic(const QString& topic);

    QTextBrowser* Browser() const { return browser_; }

  private:
    void ShowMissingPage(const QString& path);
    void UpdateCaption();

    QString helpDir_;
    QTextBrowser* browser_;
    QToolButton* back_;
    QToolButton* forward_;
    QToolButton* home_;
};

// Opens the help window on topic, or brings the one already open to the front and shows the
// topic there: the program never has two help windows.
void ShowHelpTopic(QWidget* parent, const QString& topic);

} // namespace ampora::ui
