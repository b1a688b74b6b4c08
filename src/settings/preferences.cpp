#include "settings/preferences.h"

#include "tables/number_text.h"

#include <optional>
#include <string>

namespace ampora {

namespace {

std::int16_t IntegerIn(const SettingsStore& store, const char* key, int low, int high,
                       std::int16_t fallback) {
    const auto value = ParseInteger(store.Get(kParameters, key));
    if (!value || *value < low || *value > high) {
        return fallback;
    }
    return static_cast<std::int16_t>(*value);
}

std::optional<WindowGeometry> StoredGeometry(const SettingsStore& store, const std::string& form) {
    const auto width = ParseFloat(store.Get(kParameters, form + " Width"));
    const auto height = ParseFloat(store.Get(kParameters, form + " Height"));
    const auto left = ParseFloat(store.Get(kParameters, form + " Left"));
    const auto top = ParseFloat(store.Get(kParameters, form + " Top"));
    if (!width || !height || !left || !top) {
        return std::nullopt;
    }
    return WindowGeometry{*width, *height, *left, *top};
}

void WriteGeometry(SettingsStore& store, const std::string& form, const WindowGeometry& g) {
    store.Set(kParameters, form + " Width", ShortestText(g.Width));
    store.Set(kParameters, form + " Height", ShortestText(g.Height));
    store.Set(kParameters, form + " Left", ShortestText(g.Left));
    store.Set(kParameters, form + " Top", ShortestText(g.Top));
}

} // namespace

bool GeometryOnScreen(const WindowGeometry& w, ScreenSize screen) {
    return w.Width >= 3000 && w.Height >= 3000 && w.Left + w.Width >= 1000 &&
           w.Left <= screen.Width - 1000 && w.Top + w.Height >= 1000 &&
           w.Top <= screen.Height - 1000;
}

bool FormSizeOKRunning(const WindowGeometry& main, const WindowGeometry& equations,
                       ScreenSize screen) {
    return GeometryOnScreen(main, screen) && GeometryOnScreen(equations, screen);
}

bool FormSizeOKRegistry(const SettingsStore& store, ScreenSize screen) {
    if (store.Get(kParameters, "SigFigs").empty()) {
        return false;
    }
    const auto main = StoredGeometry(store, "Form1");
    if (!main || !GeometryOnScreen(*main, screen)) {
        return false;
    }
    const auto equations = StoredGeometry(store, "Form2");
    return equations && GeometryOnScreen(*equations, screen);
}

constexpr const char* kPractice = "PracticeHideAnswers";

StoredSettings LoadRegSettings(const SettingsStore& store, ScreenSize screen) {
    StoredSettings settings;
    if (store.Get(kParameters, "SigFigs").empty()) {
        return settings;
    }
    settings.FirstRun = false;
    settings.Preferences.SigFigs = IntegerIn(store, "SigFigs", 3, 8, 3);
    settings.Preferences.FontIndex = IntegerIn(store, "FontIndex", 1, 4, 3);
    settings.Preferences.AutoNamePattern = IntegerIn(store, "AutoNameIndex", 1, 3, 1);
    settings.Preferences.ShowInstructions = store.Get(kParameters, "Instructions") == "True";
    settings.Preferences.PracticeHideAnswers = store.Get(kParameters, kPractice) == "True";
    settings.Preferences.ReportRowOperations =
        store.Get(kParameters, kReportRowOperations) == "True";
    if (FormSizeOKRegistry(store, screen)) {
        settings.UseStoredGeometry = true;
        settings.Main = *StoredGeometry(store, "Form1");
        settings.Equations = *StoredGeometry(store, "Form2");
    }
    return settings;
}

void SaveRegSettings(SettingsStore& store, const Preferences& preferences,
                     const WindowGeometry& main, const WindowGeometry& equations,
                     ScreenSize screen) {
    store.Set(kParameters, "SigFigs", std::to_string(preferences.SigFigs));
    store.Set(kParameters, "FontIndex", std::to_string(preferences.FontIndex));
    store.Set(kParameters, "AutoNameIndex", std::to_string(preferences.AutoNamePattern));
    store.Set(kParameters, "Instructions", preferences.ShowInstructions ? "True" : "False");
    // Written once practice has been turned on, so that the settings of a student who never
    // practises hold only the usual keys.
    if (preferences.PracticeHideAnswers || !store.Get(kParameters, kPractice).empty()) {
        store.Set(kParameters, kPractice, preferences.PracticeHideAnswers ? "True" : "False");
    }
    // Written once it has been turned on, so that a store never touched by it holds only
    // the keys it always held.
    if (preferences.ReportRowOperations || !store.Get(kParameters, kReportRowOperations).empty()) {
        store.Set(kParameters, kReportRowOperations,
                  preferences.ReportRowOperations ? "True" : "False");
    }
    if (FormSizeOKRunning(main, equations, screen)) {
        WriteGeometry(store, "Form1", main);
        WriteGeometry(store, "Form2", equations);
    } else {
        SaveDefaultFormSize(store, screen);
    }
}

WindowGeometry DefaultMainGeometry(ScreenSize screen, float mainWidth, float mainHeight) {
    return WindowGeometry{mainWidth, mainHeight, (screen.Width - mainWidth) * 0.5f,
                          screen.Height * 0.2f};
}

WindowGeometry DefaultEquationsGeometry(const WindowGeometry& main) {
    return WindowGeometry{main.Width, main.Height * 0.6f, main.Left, main.Top + main.Height};
}

void SaveDefaultFormSize(SettingsStore& store, ScreenSize screen) {
    const WindowGeometry main = DefaultMainGeometry(screen, kDefaultMainWidth, kDefaultMainHeight);
    WriteGeometry(store, "Form1", main);
    WriteGeometry(store, "Form2", DefaultEquationsGeometry(main));
}

} // namespace ampora
