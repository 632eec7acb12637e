// One recorded edit, as the undo manager keeps it.
#pragma once

namespace kelvo {

class IAction {
  public:
    virtual ~IAction() = default;
    // Performs the edit where the action can; true when it succeeded.
    virtual bool Execute() = 0;
    virtual bool QueryFlag2() = 0;
    // The short name for lists of actions.
    virtual const char* GetName() = 0;
    // A sentence that reports what the edit did; valid until the next call or the action's destruction.
    virtual const char* GetResultText() = 0;
    // The object whose history the action belongs to.
    virtual const void* GetOwner() { return nullptr; }
    virtual bool QueryFlag6() { return true; }
    virtual bool QueryFlag7() { return false; }
};

}  // namespace kelvo
