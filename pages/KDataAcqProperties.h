// Display properties of a view that also shows series of instruments: keeps for each of these how incoming
// values are corrected, and which series are added and subtracted.
//
// The setup of a series is kept under its name, one key for all views. Whoever keeps series apart gives them
// names that differ in more than case and hold no backslash; the series that are added and subtracted are
// stored by name and found again by key.
#pragma once

#include "pages/KPointSourceProperties.h"

class KDataAcqProperties : public KPointSourceProperties {
  public:
    using KPointSourceProperties::KPointSourceProperties;

    // The setup of all series besides what the base keeps; the setups do not depend on the section.
    void SaveToRegistry(CString section) override;
    void LoadFromRegistry(CString section) override;

    using KPointSourceProperties::EditProperties;
    // A series of an instrument gets a page for its calculations, behind the others.
    int EditProperties(std::list<CPropertyPage*>& pages, IPointSource* source) override;

  protected:
    CString GetDataAcqKey() const;
    // A series without a stored setup keeps its own. Of one that has, stored values of another kind or length
    // change nothing, and names that no series has are passed over.
    void LoadDataAcqSetup(const char* section);
    void SaveDataAcqSetup(const char* section);
};
