// The host's profile and the paths of the settings.
#include "platform/registry/CWinApp.h"
#include "settings/ApplicationKey.h"
#include "tests/registry/RegistryFixture.h"

namespace {

using Profile = RegistryFixture;

TEST_F(Profile, ASectionIsTheDirectKeyOfItsName) {
    CWinApp app("Viewer");
    ASSERT_EQ(AfxGetApp(), &app);
    app.SetRegistryKey("Maker");
    EXPECT_EQ(ApplicationKey(), "Software\\Maker\\Viewer");
    EXPECT_TRUE(app.WriteProfileInt("Views\\Main", "Color", -2));
    EXPECT_TRUE(app.WriteProfileString("Views\\Main", "Unit", "°C"));
    CRegKey key;
    ASSERT_EQ(key.Open(HKEY_CURRENT_USER, SectionKey("Views\\Main")), ERROR_SUCCESS);
    EXPECT_EQ(GetNumber(key, "Color"), 0xFFFFFFFE);
    EXPECT_EQ(GetBytes(key, "Unit"), std::string("°C\0", 4));
    PutNumber(key, "Number", 17);
    EXPECT_EQ(app.GetProfileInt("views\\MAIN", "NUMBER", 0), 17u);
    EXPECT_EQ(DrawPropertyKey("Depth"), "Software\\Maker\\Viewer\\DrawProperty\\Depth");
}

TEST_F(Profile, WithoutARegistryKeyOrAnApplicationSettingsStillHaveAPlace) {
    EXPECT_EQ(AfxGetApp(), nullptr);
    EXPECT_EQ(ApplicationKey(), "Software\\tavin_tests");
    CWinApp app("Viewer");
    EXPECT_EQ(ApplicationKey(), "Software\\Viewer");
    EXPECT_TRUE(app.WriteProfileInt("S", "n", 3));
    CRegKey key;
    ASSERT_EQ(key.Open(HKEY_CURRENT_USER, "Software\\Viewer\\S"), ERROR_SUCCESS);
    EXPECT_EQ(GetNumber(key, "n"), 3);
    {
        const CWinApp second("Second");
        EXPECT_STREQ(AfxGetAppName(), "Second");
    }
    EXPECT_STREQ(AfxGetAppName(), "tavin_tests");
}

TEST_F(Profile, WhatIsMissingOrOfAnotherKindReadsAsTheDefault) {
    CWinApp app("Viewer");
    EXPECT_EQ(app.GetProfileInt("S", "n", -1), 0xFFFFFFFFu);
    EXPECT_EQ(app.GetProfileString("S", "t", "none"), "none");
    EXPECT_EQ(app.GetProfileString("S", "t"), "");
    CRegKey key;
    EXPECT_EQ(key.Open(HKEY_CURRENT_USER, SectionKey("S")), ERROR_FILE_NOT_FOUND) << "made by reading";
    ASSERT_EQ(key.Create(HKEY_CURRENT_USER, SectionKey("S")), ERROR_SUCCESS);
    Put(key, "short", REG_DWORD, "123");
    Put(key, "text", REG_SZ, std::string("5\0", 2));
    Put(key, "open", REG_SZ, "unterminated");
    Put(key, "empty", REG_SZ, "");
    Put(key, "long", REG_EXPAND_SZ, std::string(70000, 'x') + '\0');
    PutNumber(key, "number", 5);
    EXPECT_EQ(app.GetProfileInt("S", "short", 1), 1u);
    EXPECT_EQ(app.GetProfileInt("S", "text", 1), 1u);
    EXPECT_EQ(app.GetProfileInt(nullptr, "number", 1), 1u);
    EXPECT_EQ(app.GetProfileString("S", "number", "d"), "d");
    EXPECT_EQ(app.GetProfileString("S", "open", "d"), "d");
    EXPECT_EQ(app.GetProfileString("S", "empty", "d"), "");
    EXPECT_EQ(app.GetProfileString("S", "long").GetLength(), 70000);
}

TEST_F(Profile, NullDeletesTheEntryOrTheWholeSection) {
    CWinApp app("Viewer");
    app.WriteProfileInt("S", "a", 1);
    app.WriteProfileInt("S", "b", 2);
    app.WriteProfileInt("S\\Below", "c", 3);
    app.WriteProfileInt("Other", "d", 4);
    EXPECT_TRUE(app.WriteProfileString("S", "a", nullptr));
    EXPECT_FALSE(app.WriteProfileString("S", "a", nullptr));
    EXPECT_EQ(app.GetProfileInt("S", "a", 0), 0u);
    EXPECT_EQ(app.GetProfileInt("S", "b", 0), 2u);
    EXPECT_TRUE(app.WriteProfileString("S", nullptr, nullptr));
    EXPECT_EQ(app.GetProfileInt("S", "b", 0), 0u);
    EXPECT_EQ(app.GetProfileInt("S\\Below", "c", 0), 0u);
    EXPECT_EQ(app.GetProfileInt("Other", "d", 0), 4u);
    EXPECT_FALSE(app.WriteProfileString(nullptr, nullptr, nullptr));
    EXPECT_FALSE(app.WriteProfileString("", nullptr, nullptr)) << "an empty name is no section to delete";
    EXPECT_EQ(app.GetProfileInt("Other", "d", 0), 4u);
}

}  // namespace
