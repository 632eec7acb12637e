// Contexts on a window's client area. They draw on the picture that the window keeps, at any time; several
// may live at once. The screen shows what a CClientDC drew at the next paint, which only copies the picture.
// A context outlives its window harmlessly.
#pragma once

#include <memory>

#include "platform/gdi/CDC.h"

class CWnd;

class CClientDC : public CDC {
  public:
    // For a null pointer or a window without a client picture the context draws nothing.
    explicit CClientDC(CWnd* window);
    ~CClientDC() override;

  private:
    struct Target;
    std::unique_ptr<Target> m_target;
};

// For OnPaint.
class CPaintDC : public CDC {
  public:
    explicit CPaintDC(CWnd* window);
};
