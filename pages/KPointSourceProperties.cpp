#include "pages/KPointSourceProperties.h"

#include <algorithm>

#include "pages/CStylePage.h"
#include "platform/dialog/CPropertySheet.h"
#include "platform/registry/RegistryTransaction.h"
#include "settings/ApplicationKey.h"
#include "settings/KDrawPropertyManager.h"
#include "settings/StoredNames.h"
#include "sources/IPointSource.h"

KPointSourceProperties::KPointSourceProperties(std::list<IPointSource*>& hiddenSeries,
                                               std::list<IPointSource*>& shownSeries,
                                               KDrawPropertyManager* properties)
    : hidden(&hiddenSeries), shown(&shownSeries), manager(properties) {}

CString KPointSourceProperties::GetRegSubKey(const char* section) const { return SectionKey(section); }

void KPointSourceProperties::SaveToRegistry(CString section) {
    const RegistryTransaction together;
    SaveShown(section);
    if (!manager) return;
    for (const auto* const list : {hidden, shown})
        for (IPointSource* const source : *list) manager->Save(source->GetKey());
}

void KPointSourceProperties::LoadFromRegistry(CString section) { LoadShown(section); }

void KPointSourceProperties::LoadShown(const char* section) {
    const auto names = settings::LoadNames(ShownKey(section));
    if (!names) return;
    if (shown->size() > 1) hidden->splice(hidden->end(), *shown);
    for (const CString& name : *names) {
        const auto found = std::find_if(hidden->begin(), hidden->end(),
                                        [&](IPointSource* source) { return source->GetKey() == name; });
        if (found != hidden->end()) shown->splice(shown->end(), *hidden, found);
    }
}

void KPointSourceProperties::SaveShown(const char* section) const {
    std::vector<CString> names;
    for (IPointSource* const source : *shown) names.push_back(source->GetKey());
    settings::SaveNames(ShownKey(section), names);
}

bool KPointSourceProperties::Has(const IPointSource* source) const {
    const auto isIn = [source](const auto* list) {
        return std::find(list->begin(), list->end(), source) != list->end();
    };
    return isIn(hidden) || isIn(shown);
}

int KPointSourceProperties::EditProperties(IPointSource* source) {
    std::list<CPropertyPage*> none;
    return EditProperties(none, source);
}

int KPointSourceProperties::EditProperties(std::list<CPropertyPage*>& pages, IPointSource* source) {
    if (!manager || !source) return 0;
    // The series and the cached property may be gone when the sheet closes.
    const CString key = source->GetKey();
    CPropertySheet sheet("Line properties");
    sheet.m_psh.dwFlags |= PSH_NOAPPLYNOW;
    CStylePage style("", nullptr);
    {
        const KDrawProperty& property = manager->GetProperty(key);
        style.lineColor = property.getColor();
        style.dotSize = property.getDotSize();
        style.drawStyle = property.getDrawStyle();
        style.lineStyle = property.getLineStyle();
    }
    sheet.AddPage(&style);
    for (CPropertyPage* const page : pages)
        if (page) sheet.AddPage(page);
    if (sheet.DoModal() != IDOK) return 0;
    KDrawProperty& property = manager->GetProperty(key);
    property.setColor(style.lineColor);
    property.setLineStyle(style.lineStyle);
    property.setDrawStyle(style.drawStyle);
    property.setDotSize(style.dotSize);
    return 1;
}

void KPointSourceProperties::CopyProperties(IPointSource* from, IPointSource* to) {
    // By value: taking the second property may make room for the first.
    if (from && to && manager) manager->SetProperty(to->GetKey(), manager->GetProperty(from->GetKey()));
}
