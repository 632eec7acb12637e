// Asks how large an exported picture is to be.
#pragma once

#include "app/workbench/PictureSize.h"

namespace app {

class ExportDialog : public CDialog {
  public:
    // Offers the size that was chosen last, else the window's.
    ExportDialog(const std::string& fileName, const PictureSize& window, CWnd* parent);

    // Keeps the size for the next picture.
    PictureSize TakeChosen();

    double width;
    double height;
    int inPixels;  // else in millimetres
    int dotsPerInch;

    bool OnControlMsg(UINT id, UINT code) override;

  protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;

  private:
    void Offer(const PictureSize& size);
    void ShowUnit(CDataExchange* exchange);
    void UseUnit(int pixels);

    const std::string fileName_;
    const PictureSize window_;
    const DialogTable template_;
};

}  // namespace app
