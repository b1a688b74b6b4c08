#include "ui/main_window.h"

#include "analysis/node_naming.h"
#include "tables/workspace.h"
#include "ui/equations_window.h"

#include <QScreen>

namespace ampora::ui {

// ---- preferences and geometry ----

double MainWindow::TwipsPerPixel() const {
    const QScreen* s = screen();
    const double dpi = s != nullptr && s->logicalDotsPerInchX() > 0 ? s->logicalDotsPerInchX() : 96;
    return 1440.0 / dpi;
}

ScreenSize MainWindow::ScreenInTwips() const {
    const QScreen* s = screen();
    const QSize size = s != nullptr ? s->geometry().size() : QSize(1024, 768);
    const double tpp = TwipsPerPixel();
    return ScreenSize{static_cast<float>(size.width() * tpp),
                      static_cast<float>(size.height() * tpp)};
}

WindowGeometry MainWindow::GeometryOf(const QWidget* window) const {
    if (window->isMinimized()) {
        return WindowGeometry{}; // too small to keep: the default layout is saved instead
    }
    const double tpp = TwipsPerPixel();
    return WindowGeometry{
        static_cast<float>(window->width() * tpp), static_cast<float>(window->height() * tpp),
        static_cast<float>(window->pos().x() * tpp), static_cast<float>(window->pos().y() * tpp)};
}

WindowGeometry MainWindow::CurrentGeometry() const {
    return GeometryOf(this);
}

void MainWindow::ApplyGeometryTo(QWidget* window, const WindowGeometry& g) {
    const double tpp = TwipsPerPixel();
    window->resize(static_cast<int>(g.Width / tpp + 0.5), static_cast<int>(g.Height / tpp + 0.5));
    window->move(static_cast<int>(g.Left / tpp + 0.5), static_cast<int>(g.Top / tpp + 0.5));
}

void MainWindow::ApplyGeometry(const WindowGeometry& g) {
    ApplyGeometryTo(this, g);
}

void MainWindow::SetDefaultFormSize() {
    const double tpp = TwipsPerPixel();
    resize(static_cast<int>(kDefaultMainWidth / tpp + 0.5),
           static_cast<int>(kDefaultMainHeight / tpp + 0.5));
    // The left edge uses the width the window took, which a small screen may have cut.
    const WindowGeometry main = DefaultMainGeometry(
        ScreenInTwips(), static_cast<float>(width() * tpp), static_cast<float>(height() * tpp));
    ApplyGeometry(main);
    ApplyGeometryTo(frmEquations_, DefaultEquationsGeometry(main));
}

void MainWindow::LoadRegSettings() {
    const StoredSettings stored = ampora::LoadRegSettings(*store_, ScreenInTwips());
    mnuSF_Click(stored.Preferences.SigFigs);
    mnuF_Click(stored.Preferences.FontIndex);
    mnuAName_Click(stored.Preferences.AutoNamePattern);
    mnuPractice_Click(stored.Preferences.PracticeHideAnswers);
    if (stored.UseStoredGeometry) {
        ApplyGeometry(stored.Main);
        ApplyGeometryTo(frmEquations_, stored.Equations);
    } else {
        SetDefaultFormSize();
    }
    workspace_.Preferences.ShowInstructions = stored.Preferences.ShowInstructions;
    mnuReportRowOperations_->setChecked(stored.Preferences.ReportRowOperations);
}

void MainWindow::SaveRegSettings() {
    ampora::SaveRegSettings(*store_, workspace_.Preferences, CurrentGeometry(),
                            GeometryOf(frmEquations_), ScreenInTwips());
}

} // namespace ampora::ui
