// How KViewEx prints.
#include "platform/window/CDocument.h"
#include "views/KViewEx.h"

void KViewEx::FormatHeaderStr(CString& text) { text = GetViewName(); }

void KViewEx::FormatFooterStr(CString& text) {
    text = GetDocument() ? GetDocument()->GetPathName() : CString();
}
