#include "settings/preferences.h"
#include "support/memory_settings_store.h"
#include "support/test_files.h"

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

// What comes back from each store, and what saving writes, checked by hand in
// tests/data/settings/preferences.txt: anything not stored as allowed falls back to its default.
TEST(Preferences, StoredAndLoadedAsHandChecked) {
    const std::pair<const char*, std::vector<std::pair<std::string, std::string>>> cases[] = {
        {"saved", {}},
        {"only \"True\" spelled so turns a switch on",
         {{"Instructions", "true"}, {"ReportRowOperations", "true"}, {"PracticeHideAnswers", "1"}}},
        {"True",
         {{"Instructions", "True"},
          {"ReportRowOperations", "True"},
          {"PracticeHideAnswers", "True"}}},
        {"not numbers or out of range",
         {{"SigFigs", "lots"}, {"FontIndex", "9"}, {"AutoNameIndex", "-1"}, {"Form2 Top", "1e99"}}},
    };
    std::string dump;
    for (const auto& [what, set] : cases) {
        MemorySettingsStore store = SavedStore();
        for (const auto& [key, value] : set) {
            store.Set(kParameters, key, value);
        }
        dump += std::string("== loaded: ") + what + "\n" + Loaded(store) + "\n";
    }
    MemorySettingsStore empty;
    dump +=
        "== loaded: nothing stored, and nothing written\n" + Loaded(empty) + "\n" + empty.Dump();
    // Row operations and practice are written once turned on, and then kept as True or False.
    MemorySettingsStore store;
    Preferences preferences;
    const auto save = [&](const std::string& what) {
        SaveRegSettings(store, preferences, WindowGeometry{9000, 6000, 100, 200},
                        WindowGeometry{9000, 3600, 100, 6200}, kScreen);
        dump += "== saved " + what + ": row operations \"" +
                store.Get(kParameters, "ReportRowOperations") + "\", practice \"" +
                store.Get(kParameters, "PracticeHideAnswers") + "\"\n" + Loaded(store) + "\n";
    };
    save("the defaults");
    preferences = {6, 1, 3, false, true, true};
    save("every preference changed");
    preferences.ReportRowOperations = preferences.PracticeHideAnswers = false;
    save("row operations and practice turned off again");
    MemorySettingsStore offScreen;
    SaveRegSettings(offScreen, preferences, WindowGeometry{9000, 6000, 19000, 300},
                    WindowGeometry{9000, 3600, 100, 6200}, kScreen);
    dump += "== saved with the main window off screen: the default layout\n" + offScreen.Dump();
    SaveRegSettings(offScreen, preferences, WindowGeometry{9000.5f, 6000, 150, 300},
                    WindowGeometry{9000, 3600, 100, 6200}, kScreen);
    dump += "== saved on screen, a fraction of a twip wide\nwidth " +
            offScreen.Get(kParameters, "Form1 Width") + ", left " +
            offScreen.Get(kParameters, "Form1 Left") + "\n";
    EXPECT_EQ(dump, test::ExpectedText("settings/preferences.txt", dump));
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

} // namespace
} // namespace ampora
