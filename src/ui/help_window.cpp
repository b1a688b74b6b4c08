#include "ui/help_window.h"

#include "ui/install_paths.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QPointer>
#include <QStyle>
#include <QTextBrowser>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

namespace ampora::ui {

namespace {

const QString HomeTopic = QStringLiteral("index.htm");

QToolButton* MakeButton(QWidget* parent, QStyle::StandardPixmap icon, const QString& text,
                        const QString& tip) {
    auto* button = new QToolButton(parent);
    button->setIcon(parent->style()->standardIcon(icon));
    button->setText(text);
    button->setToolTip(tip);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
    return button;
}

} // namespace

HelpWindow::HelpWindow(const QString& helpDir, QWidget* parent)
    : QWidget(parent, Qt::Window), helpDir_(helpDir), browser_(new QTextBrowser(this)),
      back_(MakeButton(this, QStyle::SP_ArrowBack, tr("Back"), tr("Previous page"))),
      forward_(MakeButton(this, QStyle::SP_ArrowForward, tr("Forward"), tr("Next page"))),
      home_(MakeButton(this, QStyle::SP_DirHomeIcon, tr("Home"), tr("Help with the program"))) {
    setObjectName(QStringLiteral("helpWindow"));
    browser_->setObjectName(QStringLiteral("helpBrowser"));
    // Links between pages are followed inside the window; nothing ever leaves the program.
    browser_->setOpenLinks(true);
    browser_->setOpenExternalLinks(false);
    browser_->setSearchPaths({helpDir_});

    auto* buttons = new QHBoxLayout;
    buttons->setContentsMargins(4, 2, 4, 2);
    buttons->addWidget(back_);
    buttons->addWidget(forward_);
    buttons->addWidget(home_);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(buttons);
    layout->addWidget(browser_);

    back_->setEnabled(false);
    forward_->setEnabled(false);
    connect(back_, &QToolButton::clicked, browser_, &QTextBrowser::backward);
    connect(forward_, &QToolButton::clicked, browser_, &QTextBrowser::forward);
    connect(home_, &QToolButton::clicked, this, [this] { ShowTopic(HomeTopic); });
    connect(browser_, &QTextBrowser::backwardAvailable, back_, &QToolButton::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward_, &QToolButton::setEnabled);
    connect(browser_, &QTextBrowser::sourceChanged, this, &HelpWindow::UpdateCaption);

    setWindowTitle(tr("DC Ampora Help"));
    resize(820, 680);
}

void HelpWindow::ShowTopic(const QString& topic) {
    const QString path = QDir(helpDir_).filePath(topic);
    if (!QFileInfo(path).isFile()) {
        ShowMissingPage(path);
        return;
    }
    browser_->setSource(QUrl::fromLocalFile(path));
}

void HelpWindow::ShowMissingPage(const QString& path) {
    // Shown as a page of its own so the student sees what is wrong in the place they looked.
    browser_->setHtml(tr("<h2>Help page not found</h2>"
                         "<p>DC Ampora could not find the help page</p><p><tt>%1</tt></p>"
                         "<p>The help pages are installed with the program in <tt>%2</tt>. "
                         "Reinstalling DC Ampora puts them back.</p>")
                          .arg(path.toHtmlEscaped(), helpDir_.toHtmlEscaped()));
    UpdateCaption();
}

void HelpWindow::UpdateCaption() {
    const QString title = browser_->documentTitle();
    setWindowTitle(title.isEmpty() ? tr("DC Ampora Help") : tr("DC Ampora Help - ") + title);
}

void ShowHelpTopic(QWidget* parent, const QString& topic) {
    // Owned by parent (or deleted on close when there is none); the guard forgets it then.
    static QPointer<HelpWindow> window;
    if (window == nullptr) {
        window = new HelpWindow(HelpDir(), parent);
        if (parent == nullptr) {
            window->setAttribute(Qt::WA_DeleteOnClose);
        }
    }
    window->ShowTopic(topic);
    window->show();
    window->raise();
    window->activateWindow();
}

} // namespace ampora::ui
