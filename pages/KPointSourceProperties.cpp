#include "pages/KPointSourceProperties.h"

#include <algorithm>

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

void KPointSourceProperties::CopyProperties(IPointSource* from, IPointSource* to) {
    // By value: taking the second property may make room for the first.
    if (from && to && manager) manager->SetProperty(to->GetKey(), manager->GetProperty(from->GetKey()));
}
