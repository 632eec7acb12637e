// Which series of a graph view are shown, and how each is drawn. Works on the view's two lists of series and
// on the manager that keeps the draw properties; owns none of them.
//
// The shown series are kept by their keys, in their order, below the settings section: what is stored and is
// not among the series is passed over.
#pragma once

#include <list>

#include "platform/core/CString.h"
#include "settings/TavinProp.h"

class CPropertyPage;
class IPointSource;
class KDrawPropertyManager;

class KPointSourceProperties : public TavinProp {
  public:
    // The manager may be null: then nothing is known of how series are drawn.
    KPointSourceProperties(std::list<IPointSource*>& hidden, std::list<IPointSource*>& shown,
                           KDrawPropertyManager* manager);
    KPointSourceProperties(const KPointSourceProperties&) = default;
    KPointSourceProperties& operator=(const KPointSourceProperties&) = default;

    // Which series are shown, and how all of them are drawn.
    void SaveToRegistry(CString section) override;
    // Which series are shown. The draw properties are loaded when somebody asks the manager for them.
    void LoadFromRegistry(CString section) override;

    // Whether the series is in one of the lists.
    bool Has(const IPointSource* source) const;
    // Lets the user edit how the series is drawn: 1 when he agreed, 0 otherwise and without a manager.
    virtual int EditProperties(IPointSource* source);
    // The same in a sheet with further pages, which are the caller's; null ones are passed over.
    virtual int EditProperties(std::list<CPropertyPage*>& pages, IPointSource* source);
    // Has `to` drawn as `from` is; null series are ignored.
    virtual void CopyProperties(IPointSource* from, IPointSource* to);
    virtual ~KPointSourceProperties() = default;

    std::list<IPointSource*>* hidden;
    std::list<IPointSource*>* shown;  // in the order in which they are drawn, the primary one first
    KDrawPropertyManager* manager;

  protected:
    CString GetRegSubKey(const char* section) const;
    // Moves what is stored from hidden to shown, after several shown ones have been hidden; a single one
    // stays. Nothing changes where nothing was ever stored.
    void LoadShown(const char* section);
    void SaveShown(const char* section) const;
};
