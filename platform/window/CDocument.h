// What views show. A document knows its views and tells them of changes; it does not own them. It is its
// host's, unless m_bAutoDelete is set: then it ends with its last view and is deleted when no event is being
// handled any more.
#pragma once

#include <vector>

#include "platform/window/CCmdTarget.h"
#include "platform/window/WindowTypes.h"

class CFrameWnd;
class CView;

class CDocument : public CCmdTarget {
    DECLARE_DYNAMIC(CDocument)

  public:
    CDocument() = default;
    // Views that are left lose their document.
    ~CDocument() override;
    CDocument(const CDocument&) = delete;
    CDocument& operator=(const CDocument&) = delete;

    // A view belongs to one document; adding it takes it from the one before.
    void AddView(CView* view);
    void RemoveView(CView* view);
    const std::vector<CView*>& GetViews() const { return m_views; }

    // Calls OnUpdate of every view but the sender, in the order in which they were added. Views that end
    // meanwhile are left out.
    void UpdateAllViews(CView* sender, long hint = 0, CObject* hintObject = nullptr);

    const CString& GetTitle() const { return m_title; }
    virtual void SetTitle(LPCSTR title);
    const CString& GetPathName() const { return m_pathName; }
    // The title becomes the path's last part.
    virtual void SetPathName(LPCSTR pathName);
    virtual BOOL IsModified() { return m_modified; }
    virtual void SetModifiedFlag(BOOL modified = TRUE) { m_modified = modified; }

    // TRUE when the document may go: it is unmodified, was saved, or the user does not want it saved.
    virtual BOOL SaveModified();
    // Asked before a frame closes. Default: SaveModified when no other frame shows the document.
    virtual BOOL CanCloseFrame(CFrameWnd* frame);
    // Writes the document; FALSE when it was not written. Default: there is nothing to write.
    virtual BOOL DoFileSave();

    BOOL m_bAutoDelete = FALSE;

    // Ends a document with m_bAutoDelete that no view shows: after a frame for it could not be made.
    void EndUnlessShown();

  private:
    bool m_ended = false;
    std::vector<CView*> m_views;
    CString m_title;
    CString m_pathName;
    BOOL m_modified = FALSE;
};
