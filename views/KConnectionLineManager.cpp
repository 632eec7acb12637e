#include "views/KConnectionLineManager.h"

#include <algorithm>

#include "platform/registry/CRegKey.h"
#include "platform/registry/CWinApp.h"
#include "platform/registry/RegistryTransaction.h"
#include "settings/ApplicationKey.h"
#include "settings/StoredNames.h"
#include "sources/IPointSource.h"
#include "views/KConnectionLinePage.h"

namespace KConnectionLineManager {

namespace {

constexpr const char* kStart = "Start";
constexpr const char* kEnd = "End";
constexpr const char* kColor = "Color";
constexpr const char* kType = "Type";
constexpr const char* kLineStyle = "LineStyle";

// The lines are stored in sections below this one.
CString LinesSection(const CString& section) { return section + "\\" + "Connection Line"; }

void StoreLine(CWinApp& profile, const CString& section, const KConnectionLine& line) {
    profile.WriteProfileString(section, kStart, line.start->GetName());
    profile.WriteProfileString(section, kEnd, line.end->GetName());
    profile.WriteProfileInt(section, kColor, static_cast<int>(line.color));
    profile.WriteProfileInt(section, kType, line.type);
    profile.WriteProfileInt(section, kLineStyle, line.style);
}

}  // namespace

LineProperties::LineProperties(std::list<IPointSource*>& hiddenSeries, std::list<IPointSource*>& shownSeries)
    : hidden(&hiddenSeries), shown(&shownSeries) {}

LineProperties::~LineProperties() = default;

void LineProperties::SaveToRegistry(CString section) {
    CWinApp* const profile = AfxGetApp();
    if (!profile) return;
    const RegistryTransaction together;
    const CString all = LinesSection(section);
    CRegKey stored;
    if (stored.Create(HKEY_CURRENT_USER, SectionKey(all), KEY_ALL_ACCESS) != ERROR_SUCCESS) return;
    for (const CString& name : settings::SubKeyNames(stored)) RegDeleteTreeA(stored, name);
    int n = 0;
    for (const auto& line : lines) {
        CString place;
        place.Format("\\[%d]", n++);
        StoreLine(*profile, all + place, *line);
    }
}

void LineProperties::LoadFromRegistry(CString section) {
    if (auto stored = StoredLines(section)) lines.splice(lines.end(), *stored);
}

std::optional<LineProperties::Lines> LineProperties::StoredLines(const CString& section) const {
    CWinApp* const profile = AfxGetApp();
    const CString all = LinesSection(section);
    const RegistryTransaction together(TransactionFor::Reading);
    CRegKey below;
    if (!profile || below.Open(HKEY_CURRENT_USER, SectionKey(all), KEY_ALL_ACCESS) != ERROR_SUCCESS)
        return {};
    Lines found;
    for (const CString& name : settings::SubKeyNames(below)) {
        const CString place = all + "\\" + name;
        IPointSource* const start = FindByName(profile->GetProfileString(place, kStart));
        IPointSource* const end = FindByName(profile->GetProfileString(place, kEnd));
        if (start && end) {
            const auto color = static_cast<COLORREF>(profile->GetProfileInt(place, kColor, 0));
            const auto type = static_cast<int>(profile->GetProfileInt(place, kType, 0));
            const auto style = static_cast<int>(profile->GetProfileInt(place, kLineStyle, 0));
            found.push_back(std::make_unique<KConnectionLine>(start, end, type, style, color));
        } else {
            RegDeleteTreeA(below, name);
        }
    }
    return found;
}

// Nothing has an empty name: it stands for one that is missing.
IPointSource* LineProperties::FindByName(const CString& name) const {
    if (name.IsEmpty()) return nullptr;
    for (const auto* const list : {hidden, shown})
        for (IPointSource* const source : *list)
            if (source->GetName() == name) return source;
    return nullptr;
}

bool LineProperties::Has(const IPointSource* source) const {
    const auto isIn = [source](const auto* list) {
        return std::find(list->begin(), list->end(), source) != list->end();
    };
    return isIn(hidden) || isIn(shown);
}

KConnectionLinePage& LineProperties::GetPage() {
    if (!page) page = std::make_unique<KConnectionLinePage>(key, this);
    return *page;
}

void LineProperties::SetKey(const CString& viewKey) {
    key = viewKey;
    if (page) page->SetRegKey(key);
}

void LineProperties::Draw(CDC* dc) {
    for (const auto& line : lines) line->Draw(dc);
}

void LineProperties::RemoveSource(const IPointSource* source) {
    if (page) page->RemoveSource(source);
    lines.remove_if([source](const auto& line) { return line->Joins(source); });
}

}  // namespace KConnectionLineManager
