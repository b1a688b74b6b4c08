#include "settings/preferences.h"
#include "support/memory_settings_store.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::MemorySettingsStore;

constexpr ScreenSize kScreen{19200, 14400}; // 1280 x 960 pixels at 96 dpi

void StoreGeometry(MemorySettingsStore& store, const std::string& form, const std::string& w,
                   const std::string& h, const std::string& l, const std::string& t) {
    store.Set(kParameters, form + " Width", w);
    store.Set(kParameters, form + " Height", h);
    store.Set(kParameters, form + " Left", l);
    store.Set(kParameters, form + " Top", t);
}

// A store as a previous run leaves it; AutoNameIndex holds its highest allowed value.
MemorySettingsStore SavedStore() {
    MemorySettingsStore store;
    store.Set(kParameters, "SigFigs", "5");
    store.Set(kParameters, "FontIndex", "2");
    store.Set(kParameters, "AutoNameIndex", "3");
    store.Set(kParameters, "Instructions", "False");
    StoreGeometry(store, "Form1", "9000", "6000", "100", "200");
    StoreGeometry(store, "Form2", "9000", "3600", "100", "6200");
    return store;
}

std::string Loaded(const MemorySettingsStore& store) {
    const StoredSettings s = LoadRegSettings(store, kScreen);
    const Preferences& p = s.Preferences;
    const auto flag = [](bool on) { return on ? "on" : "off"; };
    std::string out = std::string(s.FirstRun ? "first run" : "known") + ", figures " +
                      std::to_string(p.SigFigs) + ", fonts " + std::to_string(p.FontIndex) +
                      ", names " + std::to_string(p.AutoNamePattern) + ", instructions " +
                      flag(p.ShowInstructions) + ", row operations " + flag(p.ReportRowOperations) +
                      ", practice " + flag(p.PracticeHideAnswers);
    if (s.UseStoredGeometry) {
        out += ", windows " + std::to_string(int(s.Main.Width)) + " wide, equations at " +
               std::to_string(int(s.Equations.Top));
    }
    return out;
}

TEST(Preferences, WhatTheStoreHoldsComesBackAndAnythingElseFallsBackToTheDefaults) {
    struct Case {
        const char* what;
        std::vector<std::pair<std::string, std::string>> set; // over the saved store
        const char* loaded;
    };
    const Case cases[] = {
        {"saved",
         {},
         "known, figures 5, fonts 2, names 3, instructions off, row operations off, "
         "practice off, windows 9000 wide, equations at 6200"},
        {"only \"True\" spelled so shows the instructions",
         {{"Instructions", "true"}, {"ReportRowOperations", "true"}, {"PracticeHideAnswers", "1"}},
         "known, figures 5, fonts 2, names 3, instructions off, row operations off, practice "
         "off, windows 9000 wide, equations at 6200"},
        {"true",
         {{"Instructions", "True"},
          {"ReportRowOperations", "True"},
          {"PracticeHideAnswers", "True"}},
         "known, figures 5, fonts 2, names 3, instructions on, row operations on, practice on, "
         "windows 9000 wide, equations at 6200"},
        {"not numbers or out of range",
         {{"SigFigs", "lots"}, {"FontIndex", "9"}, {"AutoNameIndex", "-1"}, {"Form2 Top", "1e99"}},
         "known, figures 3, fonts 3, names 1, instructions off, row operations off, practice off"},
    };
    for (const Case& c : cases) {
        MemorySettingsStore store = SavedStore();
        for (const auto& [key, value] : c.set) {
            store.Set(kParameters, key, value);
        }
        EXPECT_EQ(Loaded(store), c.loaded) << c.what;
    }
    MemorySettingsStore empty;
    EXPECT_EQ(Loaded(empty), "first run, figures 3, fonts 3, names 1, instructions on, row "
                             "operations off, practice off");
    EXPECT_EQ(empty.Dump(), "");
}

// Row operations and practice are written once turned on, and then kept as True or False.
TEST(Preferences, SavedPreferencesAreWrittenAsTheyComeBack) {
    MemorySettingsStore store;
    Preferences preferences;
    const auto saved = [&] {
        SaveRegSettings(store, preferences, WindowGeometry{9000, 6000, 100, 200},
                        WindowGeometry{9000, 3600, 100, 6200}, kScreen);
        return store.Get(kParameters, "ReportRowOperations") + "/" +
               store.Get(kParameters, "PracticeHideAnswers") + " -> " + Loaded(store);
    };
    EXPECT_EQ(saved(), "/ -> known, figures 3, fonts 3, names 1, instructions on, row operations "
                       "off, practice off, windows 9000 wide, equations at 6200");
    preferences = {6, 1, 3, false, true, true};
    EXPECT_EQ(saved(), "True/True -> known, figures 6, fonts 1, names 3, instructions off, row "
                       "operations on, practice on, windows 9000 wide, equations at 6200");
    preferences.ReportRowOperations = preferences.PracticeHideAnswers = false;
    EXPECT_EQ(saved().substr(0, 12), "False/False ");
}

TEST(WindowGeometryRules, StoredGeometryNeedsSizeAndAThousandTwipsOnScreen) {
    const auto accepted = [](const std::string& w, const std::string& l) {
        MemorySettingsStore store = SavedStore();
        StoreGeometry(store, "Form1", w, "6000", l, "200");
        return FormSizeOKRegistry(store, kScreen);
    };
    EXPECT_TRUE(accepted("3000", "100"));
    EXPECT_FALSE(accepted("2999", "100"));
    EXPECT_TRUE(accepted("9000", "18200"));  // SW - 1000
    EXPECT_FALSE(accepted("9000", "18201")); // SW - 999
    EXPECT_TRUE(accepted("9000", "-8000"));  // L + W = 1000
    EXPECT_FALSE(accepted("9000", "-8001"));
    MemorySettingsStore store = SavedStore();
    StoreGeometry(store, "Form2", "9000", "3600", "100", "13401"); // T > SH - 1000
    EXPECT_FALSE(FormSizeOKRegistry(store, kScreen));
    store.Set(kParameters, "SigFigs", "");
    StoreGeometry(store, "Form2", "9000", "3600", "100", "6200");
    EXPECT_FALSE(FormSizeOKRegistry(store, kScreen)); // no settings at all
    store.Set(kParameters, "SigFigs", "3");
    StoreGeometry(store, "Form2", "9000", "2999", "100", "6200"); // too low to use
    EXPECT_FALSE(FormSizeOKRegistry(store, kScreen));
    StoreGeometry(store, "Form2", "9000", "3000", "100", "6200");
    EXPECT_TRUE(FormSizeOKRegistry(store, kScreen));
}

TEST(WindowGeometryRules, AWindowOffScreenAtExitSavesTheDefaultLayout) {
    MemorySettingsStore store;
    Preferences preferences;
    preferences.SigFigs = 6;
    preferences.ShowInstructions = false;
    SaveRegSettings(store, preferences, WindowGeometry{9000, 6000, 19000, 300},
                    WindowGeometry{9000, 3600, 100, 6200}, kScreen);
    EXPECT_EQ(store.Dump(), "Parameters/AutoNameIndex=1\n"
                            "Parameters/FontIndex=3\n"
                            "Parameters/Form1 Height=7000\n"
                            "Parameters/Form1 Left=4600\n"
                            "Parameters/Form1 Top=2880\n"
                            "Parameters/Form1 Width=10000\n"
                            "Parameters/Form2 Height=4200\n"
                            "Parameters/Form2 Left=4600\n"
                            "Parameters/Form2 Top=9880\n"
                            "Parameters/Form2 Width=10000\n"
                            "Parameters/Instructions=False\n"
                            "Parameters/SigFigs=6\n");
    SaveRegSettings(store, preferences, WindowGeometry{9000.5f, 6000, 150, 300},
                    WindowGeometry{9000, 3600, 100, 6200}, kScreen);
    EXPECT_EQ(store.Get(kParameters, "Form1 Width"), "9000.5");
    EXPECT_EQ(store.Get(kParameters, "Form1 Left"), "150");
}

} // namespace
} // namespace ampora
