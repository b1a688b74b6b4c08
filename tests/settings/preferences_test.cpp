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

TEST(Preferences, FirstRunGivesTheDefaultsAndWritesNothing) {
    MemorySettingsStore store;
    const StoredSettings settings = LoadRegSettings(store, kScreen);
    EXPECT_TRUE(settings.FirstRun);
    EXPECT_FALSE(settings.UseStoredGeometry);
    EXPECT_EQ(settings.preferences.SigFigs, 3);
    EXPECT_EQ(settings.preferences.FontIndex, 3);
    EXPECT_EQ(settings.preferences.AutoNamePattern, 1);
    EXPECT_TRUE(settings.preferences.ShowInstructions);
    EXPECT_EQ(store.Dump(), "");
}

TEST(Preferences, SavedValuesAndGeometryComeBack) {
    const StoredSettings settings = LoadRegSettings(SavedStore(), kScreen);
    EXPECT_FALSE(settings.FirstRun);
    EXPECT_EQ(settings.preferences.SigFigs, 5);
    EXPECT_EQ(settings.preferences.FontIndex, 2);
    EXPECT_EQ(settings.preferences.AutoNamePattern, 3);
    EXPECT_FALSE(settings.preferences.ShowInstructions);
    ASSERT_TRUE(settings.UseStoredGeometry);
    EXPECT_EQ(settings.Main.Width, 9000);
    EXPECT_EQ(settings.Equations.Top, 6200);
}

TEST(Preferences, InstructionsShowOnlyForTrueSpelledExactly) {
    MemorySettingsStore store = SavedStore();
    store.Set(kParameters, "Instructions", "true");
    EXPECT_FALSE(LoadRegSettings(store, kScreen).preferences.ShowInstructions);
    store.Set(kParameters, "Instructions", "True");
    EXPECT_TRUE(LoadRegSettings(store, kScreen).preferences.ShowInstructions);
}

TEST(Preferences, RowOperationsInTheReportAreKeptOnceTurnedOnAndReadOnlyFromTrue) {
    MemorySettingsStore store = SavedStore();
    const WindowGeometry main{9000, 6000, 150, 300};
    const WindowGeometry equations{9000, 3600, 100, 6200};
    Preferences preferences;
    SaveRegSettings(store, preferences, main, equations, kScreen);
    EXPECT_EQ(store.Get(kParameters, "ReportRowOperations"), "");
    const struct {
        bool saved;
        const char* stored;
        bool read;
    } rows[] = {{true, "True", true}, {false, "False", false}};
    for (const auto& row : rows) {
        preferences.ReportRowOperations = row.saved;
        SaveRegSettings(store, preferences, main, equations, kScreen);
        EXPECT_EQ(store.Get(kParameters, "ReportRowOperations"), row.stored);
        EXPECT_EQ(LoadRegSettings(store, kScreen).preferences.ReportRowOperations, row.read);
    }
    store.Set(kParameters, "ReportRowOperations", "true");
    EXPECT_FALSE(LoadRegSettings(store, kScreen).preferences.ReportRowOperations);
}

TEST(Preferences, ValuesThatAreNotNumbersOrOutOfRangeFallBackToTheDefaults) {
    MemorySettingsStore store = SavedStore();
    store.Set(kParameters, "SigFigs", "lots");
    store.Set(kParameters, "FontIndex", "9");
    store.Set(kParameters, "AutoNameIndex", "-1");
    store.Set(kParameters, "Form2 Top", "1e99");
    const StoredSettings settings = LoadRegSettings(store, kScreen);
    EXPECT_FALSE(settings.FirstRun);
    EXPECT_EQ(settings.preferences.SigFigs, 3);
    EXPECT_EQ(settings.preferences.FontIndex, 3);
    EXPECT_EQ(settings.preferences.AutoNamePattern, 1);
    EXPECT_FALSE(settings.UseStoredGeometry);
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

TEST(Preferences, PracticeIsStoredOnceTurnedOnAndComesBack) {
    MemorySettingsStore store;
    Preferences preferences;
    const auto saved = [&] {
        SaveRegSettings(store, preferences, WindowGeometry{9000, 6000, 100, 200},
                        WindowGeometry{9000, 3600, 100, 6200}, kScreen);
        return store.Get(kParameters, "PracticeHideAnswers") + " -> " +
               (LoadRegSettings(store, kScreen).preferences.PracticeHideAnswers ? "on" : "off");
    };
    EXPECT_EQ(saved(), " -> off");
    preferences.PracticeHideAnswers = true;
    EXPECT_EQ(saved(), "True -> on");
    preferences.PracticeHideAnswers = false;
    EXPECT_EQ(saved(), "False -> off");
}

} // namespace
} // namespace ampora
