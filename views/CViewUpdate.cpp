#include "views/CViewUpdate.h"

#include <bit>

static_assert(sizeof(long) == sizeof(IPointSource*), "the integer payload carries the source");

IMPLEMENT_DYNCREATE(CViewUpdate, CObject)

CViewUpdate::CViewUpdate(std::uint32_t cookie, UpdateType type, IPointSource* source)
    : CViewUpdate(cookie, type, std::bit_cast<long>(source)) {}

IPointSource* CViewUpdate::GetSource() const { return std::bit_cast<IPointSource*>(payload_.integer); }
