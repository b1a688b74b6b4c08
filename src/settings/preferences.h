#pragma once
// The user's preferences and the geometry of the main and equations windows, read from the
// settings store at start-up and written back at exit. Geometry is in twips.

#include "settings/settings_store.h"
#include "tables/workspace.h"

namespace ampora {

inline constexpr const char* kParameters = "Parameters";
inline constexpr const char* kReportRowOperations = "ReportRowOperations";

struct WindowGeometry {
    float Width = 0, Height = 0, Left = 0, Top = 0;
};

struct ScreenSize {
    float Width = 0, Height = 0;
};

struct StoredSettings {
    bool FirstRun = true; // no "SigFigs" in the store
    ampora::Preferences Preferences;
    bool UseStoredGeometry = false; // else the default layout applies
    WindowGeometry Main;
    WindowGeometry Equations;
};

// What the store holds, with every value that is missing, not a number or out of range
// replaced by its default.
StoredSettings LoadRegSettings(const SettingsStore& store, ScreenSize screen);

// Writes the preferences, and the geometry when FormSizeOKRunning accepts it (the default
// layout otherwise).
void SaveRegSettings(SettingsStore& store, const Preferences& preferences,
                     const WindowGeometry& main, const WindowGeometry& equations,
                     ScreenSize screen);

// Whether a window of this geometry is large enough and far enough on the screen.
bool GeometryOnScreen(const WindowGeometry& window, ScreenSize screen);
bool FormSizeOKRegistry(const SettingsStore& store, ScreenSize screen);
bool FormSizeOKRunning(const WindowGeometry& main, const WindowGeometry& equations,
                       ScreenSize screen);

// The default layout: the main window 10000 by 7000 twips, centred across the screen a
// fifth of the way down, the equations window below it, as wide and 60% as tall.
// `mainWidth` is the width the main window reports after being given 10000.
WindowGeometry DefaultMainGeometry(ScreenSize screen, float mainWidth, float mainHeight);
WindowGeometry DefaultEquationsGeometry(const WindowGeometry& main);
void SaveDefaultFormSize(SettingsStore& store, ScreenSize screen);

inline constexpr float kDefaultMainWidth = 10000;
inline constexpr float kDefaultMainHeight = 7000;

} // namespace ampora
