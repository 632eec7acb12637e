#include "editing/KPointSourceCmd.h"

KPointSourceCmd::KPointSourceCmd(IPointSource* series)
    : source(series), indices(PointIndices::First(series ? series->GetCount() : 0)) {}

KPointSourceCmd::KPointSourceCmd(IPointSource* series, const long* listed, int count) : source(series) {
    if (!series) return;
    indices = listed && count > 0 ? PointIndices(listed, count) : PointIndices::First(series->GetCount());
}

const char* KPointSourceCmd::GetResultText() { return Result(40009, IndexCount()); }
