#include "pages/KDataAcqProperties.h"

#include <algorithm>
#include <cmath>

#include "pages/KDataAcqPage.h"
#include "platform/registry/CRegKey.h"
#include "platform/registry/RegistryTransaction.h"
#include "settings/ApplicationKey.h"
#include "settings/Configuration.h"
#include "settings/StoredNames.h"
#include "sources/KDataAcqSource.h"

namespace {

using Sources = std::list<IPointSource*>;

constexpr const char* kAdd = "\\Add";
constexpr const char* kSubtract = "\\Sub";

// The values beside the two lists.
struct Correction : Configuration {
    explicit Correction(const KDataAcqSource& source)
        : invertY(source.getInvertY()), offset(source.getFixedOffsetY()) {}

    void readwrite() override {
        readwriteValue("InvertY", &invertY, sizeof invertY);
        readwriteValue("Offset", &offset, sizeof offset);
    }

    std::int32_t invertY;
    double offset;
};

template <class Act>
void ForEachAcqSource(const KPointSourceProperties& set, Act act) {
    for (const auto* const list : {set.hidden, set.shown})
        for (IPointSource* const source : *list)
            if (source->IsKindOf(RUNTIME_CLASS(KDataAcqSource))) act(static_cast<KDataAcqSource&>(*source));
}

IPointSource* FindByKey(const KPointSourceProperties& set, const CString& key) {
    for (const auto* const list : {set.hidden, set.shown})
        for (IPointSource* const source : *list)
            if (source->GetKey() == key) return source;
    return nullptr;
}

Sources StoredSources(const KPointSourceProperties& set, const CString& path) {
    Sources found;
    if (const auto names = settings::LoadNames(path))
        for (const CString& name : *names)
            if (IPointSource* const source = FindByKey(set, name)) found.push_back(source);
    return found;
}

void StoreSources(const Sources& sources, const CString& path) {
    std::vector<CString> names;
    for (IPointSource* const source : sources) names.push_back(source->GetName());
    settings::SaveNames(path, names);
}

}  // namespace

CString KDataAcqProperties::GetDataAcqKey() const { return DataAcqKey(); }

void KDataAcqProperties::LoadFromRegistry(CString section) {
    KPointSourceProperties::LoadFromRegistry(section);
    LoadDataAcqSetup(section);
}

void KDataAcqProperties::SaveToRegistry(CString section) {
    const RegistryTransaction together;
    SaveDataAcqSetup(section);
    KPointSourceProperties::SaveToRegistry(section);
}

void KDataAcqProperties::LoadDataAcqSetup(const char*) {
    const RegistryTransaction together(TransactionFor::Reading);
    ForEachAcqSource(*this, [this](KDataAcqSource& source) {
        const CString path = GetDataAcqKey() + "\\" + source.GetName();
        // Looking must not make a key.
        if (CRegKey().Open(HKEY_CURRENT_USER, path, KEY_READ) != ERROR_SUCCESS) return;
        Correction stored(source);
        stored.exchange(HKEY_CURRENT_USER, path, false);
        source.setInvertY(stored.invertY != 0);
        if (std::isfinite(stored.offset)) source.setFixedOffsetY(stored.offset);
        Sources added = StoredSources(*this, path + kAdd);
        Sources subtracted = StoredSources(*this, path + kSubtract);
        source.setAdd(added);
        source.setSubtract(subtracted);
    });
}

void KDataAcqProperties::SaveDataAcqSetup(const char*) {
    const RegistryTransaction together;
    ForEachAcqSource(*this, [this](KDataAcqSource& source) {
        const CString path = GetDataAcqKey() + "\\" + source.GetName();
        if (!Correction(source).exchange(HKEY_CURRENT_USER, path, true)) return;
        StoreSources(source.getAdd(), path + kAdd);
        StoreSources(source.getSubtract(), path + kSubtract);
    });
}

int KDataAcqProperties::EditProperties(std::list<CPropertyPage*>& pages, IPointSource* source) {
    if (!source || !source->IsKindOf(RUNTIME_CLASS(KDataAcqSource)))
        return KPointSourceProperties::EditProperties(pages, source);
    auto& acquired = static_cast<KDataAcqSource&>(*source);
    KDataAcqPage page;
    page.inputName = acquired.GetName();
    page.invertInput = acquired.getInvertY();
    page.offset = acquired.getFixedOffsetY();
    page.candidates = *hidden;
    page.candidates.insert(page.candidates.end(), shown->begin(), shown->end());
    const Sources before = page.candidates;
    page.candidates.remove(source);
    page.addSeries = acquired.getAdd();
    page.subtractSeries = acquired.getSubtract();
    pages.push_back(&page);
    const int agreed = KPointSourceProperties::EditProperties(pages, source);
    pages.remove(&page);
    // A series that left the view meanwhile may not exist any more.
    const auto hasLeft = [&](const IPointSource* one) {
        return std::find(before.begin(), before.end(), one) != before.end() && !Has(one);
    };
    if (!agreed || hasLeft(source)) return agreed;
    page.addSeries.remove_if(hasLeft);
    page.subtractSeries.remove_if(hasLeft);
    acquired.setInvertY(page.invertInput != 0);
    acquired.setFixedOffsetY(page.offset);
    acquired.setAdd(page.addSeries);
    acquired.setSubtract(page.subtractSeries);
    return agreed;
}
