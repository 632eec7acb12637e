#include <gtest/gtest.h>

#include <set>

#include "app/workbench/ShortcutsDialog.h"
#include "app/workbench/WorkbenchResources.h"

namespace {

TEST(Shortcuts, TheWindowListsEveryKeyOnceAndSaysWhatItDoes) {
    const app::WorkbenchResources resources;
    std::set<std::string> listed;
    for (const auto& line : app::ShortcutsDialog::Lines()) {
        EXPECT_TRUE(listed.insert(line.press.GetString()).second) << "twice: " << line.press.GetString();
        EXPECT_FALSE(line.effect.IsEmpty()) << line.press.GetString();
    }
    for (const char* key : {"Ctrl+O", "F", "Backspace", "Esc", "F1", "Wheel"})
        EXPECT_TRUE(listed.contains(key)) << key;
}

}  // namespace
