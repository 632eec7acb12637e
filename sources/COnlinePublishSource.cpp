#include "sources/COnlinePublishSource.h"

IMPLEMENT_DYNAMIC(COnlinePublishSource, COnlineSource)

bool COnlinePublishSource::AddData(POINT* points, long count) {
    const bool added = COnlineSource::AddData(points, count);
    Notify();
    return added;
}

bool COnlinePublishSource::AddData(double x, double y) {
    const bool added = COnlineSource::AddData(x, y);
    Notify();
    return added;
}
