// What the program asks about live windows. Nothing: the user does not want it after all.
#pragma once

#include <optional>

#include "app/workbench/LiveSession.h"

namespace app {

// Where lines come from and how long the window is.
std::optional<LiveWishes> AskForLiveSource(CWnd* parent);

struct DerivedChannel {
    operationtype operation = OPERATION_SUBTRACT;
    std::size_t a = 0;
    std::size_t b = 0;
};
std::optional<DerivedChannel> AskForDerived(const LiveSession& session, CWnd* parent);

struct CorrectedChannel {
    std::size_t channel = 0;
    LiveSession::Correction correction;
};
std::optional<CorrectedChannel> AskForCorrection(const LiveSession& session, CWnd* parent);

// A number under a title.
std::optional<double> AskForNumber(const char* title, const char* label, double value, CWnd* parent);

// Tests and batch runs answer with a text or a number instead of the user.
class NumberDialog : public CDialog {
  public:
    NumberDialog(const char* title, const char* label, double value, CWnd* parent);
    const CString title;
    double value;

  protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;

  private:
    const CString label_;
};

class LiveSourceDialog : public CDialog {
  public:
    explicit LiveSourceDialog(CWnd* parent);
    CString address;
    double window = 60;
    LiveWishes Wishes() const { return wishes_; }
    // Whether the address can be read; else the user is told what was expected.
    bool TakeAddress();

  protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnOK() override;

  private:
    LiveWishes wishes_;
};

}  // namespace app
