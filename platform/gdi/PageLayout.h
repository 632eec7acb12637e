// Pages as the toolkit describes them; not for programs.
#pragma once

#include "platform/gdi/CPrintDC.h"

class QPageLayout;

QPageLayout PageLayoutOf(const PageSetup& setup);
// Without a title.
PageSetup PageSetupOf(const QPageLayout& layout);
