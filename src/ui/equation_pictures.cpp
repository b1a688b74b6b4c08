#include "ui/equation_pictures.h"

#include "report/equation_drawing.h"
#include "report/markup_state.h"
#include "report/style_codes.h"
#include "tables/workspace.h"
#include "ui/painter_surface.h"

#include <algorithm>
#include <cmath>

namespace ampora::ui {

namespace {

constexpr int kMargin = 6;
// Room enough for the widest equation twenty unknowns can make.
constexpr int kDraftWidth = 4000;

} // namespace

QImage RenderEquationPicture(const std::vector<std::string>& equations, int fontIndex,
                             qreal scale) {
    if (equations.empty()) {
        return QImage();
    }
    MarkupState state;
    state.FontIndex = static_cast<std::int16_t>(std::clamp(fontIndex, 1, kFontSetCount));
    const float line = CurrentFontSet(state).LineStep;
    // A stacked fraction is about three lines tall; the draft is cropped afterwards.
    const int draftHeight =
        static_cast<int>(std::ceil(line * 4 * static_cast<float>(equations.size()))) + 2 * kMargin;
    QImage image(static_cast<int>(std::ceil(kDraftWidth * scale)),
                 static_cast<int>(std::ceil(draftHeight * scale)), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    float widest = 0;
    float bottom = 0;
    {
        PainterSurface surface(image);
        surface.Clear();
        SetNormalStyle(surface, state);
        surface.SetCurrentY(kMargin);
        for (const std::string& equation : equations) {
            surface.SetCurrentX(kMargin);
            const EquationExtent extent = DrawEquation(surface, state, equation);
            widest = std::max(widest, extent.Width);
            bottom = surface.CurrentY();
            // A blank line between equations, as two line feeds would leave.
            surface.SetCurrentY(surface.CurrentY() + line);
        }
    }
    const int width = std::min(kDraftWidth, static_cast<int>(std::ceil(widest)) + 2 * kMargin);
    const int height = std::min(draftHeight, static_cast<int>(std::ceil(bottom)) + kMargin);
    QImage cropped = image.copy(0, 0, static_cast<int>(std::ceil(width * scale)),
                                static_cast<int>(std::ceil(height * scale)));
    cropped.setDevicePixelRatio(scale);
    return cropped;
}

QImage EquationPicture(const Workspace& ws, int which, qreal scale) {
    return RenderEquationPicture(which == 1 ? ws.Equations.FirstWritten : ws.Equations.Collected,
                                 ws.Preferences.FontIndex, scale);
}

} // namespace ampora::ui
