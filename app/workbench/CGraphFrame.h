// The child frame round the view of one file: first of its reading, then of its series. It also has the
// commands that take the view's picture or values out, and those that read the file anew.
#pragma once

#include <memory>

#include "app/workbench/CSeriesDocument.h"
#include "app/workbench/ReadingJob.h"

namespace app {

class CSeriesView;

class CGraphFrame : public CMDIChildWnd {
  public:
    // Shows the reading until ShowFile. The document is of the job's file.
    CGraphFrame(CSeriesDocument& document, std::unique_ptr<ReadingJob> job);

    // Null while the file is read for the first time.
    CSeriesView* View() const { return view_; }

    ReadingJob* Reading() const { return job_.get(); }
    // What the bar above the view says; empty while there is none.
    std::string Message() const { return messageBar_.GetText().GetString(); }
    // Reads the file anew; what is shown stays until ShowFile.
    void ReadAnew(ReadOptions options);
    // Ends the reading with its result, which is given back when it is a failure. A view that was there
    // before hands its part of the x axis and its series on.
    std::optional<Failure> FinishReading();

    // What the main window's clock asks for: to show how far the reading is, or to look whether the file has
    // changed on disk, which a bar then says.
    enum class Look { AtReading, AtDisk };
    virtual void Watch(Look look);
    // Whether there is a file that could be read again.
    virtual bool IsOfFile() const { return true; }

    bool OnCmdMsg(UINT id, CCmdUI* update) override;

  protected:
    BOOL OnCreateClient(CREATESTRUCT* create, CCreateContext* context) override;

    // For frames whose view comes from elsewhere.
    explicit CGraphFrame(CSeriesDocument& document) : document_(document) {}
    BOOL CreateClient(CView* view);
    // Puts the view in the place of the one there is.
    bool ReplaceClient(CSeriesView* view);
    CSeriesDocument& Document() { return document_; }
    CView* Client() { return client_; }
    void CreateMessageBar();
    void Tell(const std::string& message) { messageBar_.Tell(CString(message)); }
    void HideMessage() { messageBar_.Hide(); }

  private:
    static const CommandRow<CGraphFrame> kCommands[];

    void ShowFile(SeriesFile file);
    void EndClient();
    void OnExport();
    void OnCopyPicture();
    void OnCopyValues();
    void OnDismiss() { messageBar_.Hide(); }
    void OnUpdateNeedsSeries(CCmdUI* state);

    CSeriesDocument& document_;
    std::unique_ptr<ReadingJob> job_;
    CView* client_ = nullptr;
    CSeriesView* view_ = nullptr;
    CMessageBar messageBar_;
};

}  // namespace app
