// The base of the edit commands: the record of one edit of a series, with its name and a sentence about its
// result from the string table. A command never restores data; the series' own snapshots do.
//
// The command does not own its series. The host clears the undo manager's history of a series before it
// destroys the series.
#pragma once

#include "editing/PointIndices.h"
#include "platform/core/CString.h"
#include "platform/core/StringTable.h"
#include "platform/undo/IAction.h"
#include "sources/IPointSource.h"

class KPointSourceCmd : public kelvo::IAction {
  public:
    KPointSourceCmd() = default;
    // Concerns all points that the series has now.
    explicit KPointSourceCmd(IPointSource* source);
    // Concerns a copy of the `count` points listed; without any, all points that the series has now.
    KPointSourceCmd(IPointSource* source, const long* indices, int count);
    KPointSourceCmd(const KPointSourceCmd&) = delete;
    KPointSourceCmd& operator=(const KPointSourceCmd&) = delete;

    bool Execute() override { return false; }
    bool QueryFlag2() override { return false; }
    // How many points the command concerns.
    const char* GetResultText() override;
    const void* GetOwner() override { return source; }
    bool QueryFlag6() override { return true; }
    bool QueryFlag7() override { return false; }

  protected:
    // Formats the result from string resource `id`, whose conversions the arguments must fit; empty when
    // there is no such resource.
    template <class... Arguments>
    const char* Result(unsigned id, Arguments... arguments) {
        const char* format = FindStringResource(id);
        if constexpr (sizeof...(arguments) > 0)
            text.Format(format ? format : "", arguments...);
        else
            text = format;
        return text;
    }
    CString UnitX() const { return source ? source->GetUnitX() : CString(); }
    CString UnitY() const { return source ? source->GetUnitY() : CString(); }
    // For %d.
    int IndexCount() const { return SaturateToInt32(indices.GetCount()); }

    IPointSource* source = nullptr;  // not owned
    PointIndices indices;
    CString text;
};
