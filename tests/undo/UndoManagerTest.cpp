#include "platform/undo/KUndoManager.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using kelvo::KUndoManager;

// Counts the actions that live.
class Named : public kelvo::IAction {
  public:
    Named(std::string name, int& alive) : name_(std::move(name)), alive_(alive) { ++alive_; }
    ~Named() override { --alive_; }
    bool Execute() override { return false; }
    bool QueryFlag2() override { return false; }
    const char* GetName() override { return name_.c_str(); }
    const char* GetResultText() override { return "done"; }

  private:
    std::string name_;
    int& alive_;
};

std::string Names(const KUndoManager& manager, const void* owner) {
    std::string names;
    for (long i = 0; i < manager.GetCount(owner); ++i) {
        if (i == manager.GetDoneCount(owner)) names += '|';
        names += manager.GetAction(owner, i)->GetName();
    }
    return names;
}

class UndoManager : public ::testing::Test {
  protected:
    void Do(const void* owner, const char* name) { manager.SetLastAction(owner, new Named(name, alive)); }

    int alive = 0;
    const int first = 0;
    const int second = 0;
    KUndoManager manager;
};

TEST_F(UndoManager, ANewActionDropsWhatWasUndone) {
    for (const char* name : {"a", "b", "c"}) Do(&first, name);
    EXPECT_EQ(manager.Undo(&first, 2), 2);
    EXPECT_EQ(Names(manager, &first), "a|bc");
    EXPECT_EQ(manager.Redo(&first, 1), 1);
    EXPECT_EQ(Names(manager, &first), "ab|c");
    Do(&first, "d");
    EXPECT_EQ(Names(manager, &first), "abd");
    EXPECT_EQ(alive, 3);
    EXPECT_EQ(manager.Redo(&first, 1), 0);
}

TEST_F(UndoManager, StepsStayWithinTheHistory) {
    Do(&first, "a");
    EXPECT_EQ(manager.Undo(&first, 100), 1);
    EXPECT_EQ(manager.Undo(&first, 1), 0);
    EXPECT_EQ(manager.Redo(&first, 100), 1);
    EXPECT_EQ(manager.Undo(&first, -1), 0);
    EXPECT_EQ(manager.Redo(&first, -1), 0);
    EXPECT_EQ(manager.Undo(&second, 1), 0);
    EXPECT_EQ(manager.GetAction(&first, 1), nullptr);
    EXPECT_EQ(manager.GetAction(&first, -1), nullptr);
    EXPECT_EQ(manager.GetAction(&second, 0), nullptr);
}

TEST_F(UndoManager, OwnersHaveTheirOwnHistories) {
    Do(&first, "a");
    Do(&second, "b");
    manager.Undo(&second, 1);
    EXPECT_EQ(Names(manager, &first), "a");
    EXPECT_EQ(manager.GetDoneCount(&second), 0);
    manager.Clear(&first);
    EXPECT_EQ(manager.GetCount(&first), 0);
    EXPECT_EQ(manager.GetCount(&second), 1);
    EXPECT_EQ(alive, 1);
    manager.SetLastAction(&first, nullptr);
    EXPECT_EQ(manager.GetCount(&first), 0);
}

TEST_F(UndoManager, TellsOfEachChangeAndOfNothingElse) {
    std::vector<const void*> told;
    const int listener = manager.AddListener([&told](const void* owner) { told.push_back(owner); });
    Do(&first, "a");
    manager.Undo(&first, 1);
    manager.Undo(&first, 1);  // nothing left
    manager.Redo(&first, 1);
    manager.Clear(&second);  // empty
    manager.Clear(&first);
    EXPECT_EQ(told, std::vector<const void*>(4, &first));
    manager.RemoveListener(listener);
    Do(&first, "b");
    EXPECT_EQ(told.size(), 4u);
}

TEST_F(UndoManager, AListenerMayRemoveItselfAndOthersAndStepBack) {
    int calls = 0;
    int later = 0;
    int self = 0;
    self = manager.AddListener([&](const void* owner) {
        ++calls;
        manager.RemoveListener(self);
        manager.RemoveListener(later);
        manager.Undo(owner, 1);
    });
    later = manager.AddListener([&](const void*) { calls += 100; });
    Do(&first, "a");
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(manager.GetDoneCount(&first), 0);
}

TEST(ProcessUndoManager, ForgetsADyingOne) {
    KUndoManager* const before = kelvo::SetUndoManager(nullptr);
    {
        KUndoManager manager;
        EXPECT_EQ(kelvo::SetUndoManager(&manager), nullptr);
        EXPECT_EQ(kelvo::GetUndoManager(), &manager);
    }
    EXPECT_EQ(kelvo::SetUndoManager(before), nullptr);
}

}  // namespace
