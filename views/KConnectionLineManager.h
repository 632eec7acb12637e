// The connection lines of a graph view.
#pragma once

#include <list>
#include <memory>
#include <optional>

#include "settings/TavinProp.h"
#include "views/KConnectionLine.h"

class KConnectionLinePage;

namespace KConnectionLineManager {

// Works on the view's two lists of series: a line whose series are not among them is not loaded.
class LineProperties : public TavinProp {
  public:
    using Lines = std::list<std::unique_ptr<KConnectionLine>>;

    LineProperties(std::list<IPointSource*>& hidden, std::list<IPointSource*>& shown);
    virtual ~LineProperties();
    LineProperties(const LineProperties&) = delete;
    LineProperties& operator=(const LineProperties&) = delete;

    // Puts the lines in the place of those that are stored in the section.
    void SaveToRegistry(CString section) override;
    // Adds the lines that are stored there to those that the set has; takes those that cannot be made here
    // out of the store.
    void LoadFromRegistry(CString section) override;
    // The same lines, apart from the set; none when no lines were ever stored.
    std::optional<Lines> StoredLines(const CString& section) const;

    void Draw(CDC* dc);
    // Ends every line from or to the series, also those that wait on the page. For whoever takes it out of
    // the lists.
    void RemoveSource(const IPointSource* source);
    // Whether the series is in one of the lists.
    bool Has(const IPointSource* source) const;

    // The page that edits the set in the section of the view's key; made when it is first asked for.
    KConnectionLinePage& GetPage();
    void SetKey(const CString& viewKey);

    Lines lines;
    std::list<IPointSource*>* hidden;
    std::list<IPointSource*>* shown;
    CString key;  // the view's key name

  private:
    IPointSource* FindByName(const CString& name) const;

    std::unique_ptr<KConnectionLinePage> page;
};

}  // namespace KConnectionLineManager
