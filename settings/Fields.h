// Property sets as tables: one row per persistent field, walked to save, load and reset the set.
//
//   constexpr Field<CMedianFilterProperties> kFields[] = {
//       Real("MedianFilterLength", &CMedianFilterProperties::filterLength, 20.0, "%.02f", 11.0),
//       Int("MedianShowSpikeWindow", &CMedianFilterProperties::showWindow, 0),
//   };
//   void CMedianFilterProperties::LoadFromRegistry(CString section) { LoadFields(*this, kFields, section); }
//
// Integers and colours are kept as numbers, reals as texts in the row's printf format. A value that
// is missing, or a real whose text is not a finite number, leaves its field alone unless its row says what it
// reads as. Members that no row names are the set's own affair.
#pragma once

#include <cstddef>
#include <optional>
#include <type_traits>
#include <variant>

#include "platform/core/CString.h"
#include "platform/core/Types.h"
#include "platform/registry/CWinApp.h"
#include "platform/registry/RegistryTransaction.h"
#include "settings/StoredNumber.h"

namespace settings {

template <class Set>
struct Field {
    using Member = std::variant<int Set::*, COLORREF Set::*, float Set::*, double Set::*, CString Set::*>;
    const char* name;
    Member member;
    double reset = 0.0;
    const char* resetText = "";     // of a text
    const char* format = nullptr;   // of a real
    std::optional<double> missing;  // none: the current value stays
};

template <class Set>
constexpr Field<Set> Int(const char* name, int Set::*member, int reset, std::optional<int> missing = {}) {
    return {name, member, static_cast<double>(reset), "", nullptr, missing};
}
template <class Set>
constexpr Field<Set> Color(const char* name, COLORREF Set::*member, COLORREF reset) {
    return {name, member, static_cast<double>(reset), "", nullptr, {}};
}
// A float or a double; either is read in single precision.
template <class Set, class T>
constexpr Field<Set> Real(const char* name, T Set::*member, double reset, const char* format,
                          std::optional<double> missing = {}) {
    return {name, member, reset, "", format, missing};
}
template <class Set>
constexpr Field<Set> Text(const char* name, CString Set::*member, const char* reset) {
    return {name, member, 0.0, reset, nullptr, {}};
}

// Calls `act(row, field)` for every row, `field` being the member itself.
template <class Set, class Rows, class Act>
void ForEachField(Set& set, const Rows& rows, Act act) {
    for (const auto& row : rows) std::visit([&](auto member) { act(row, set.*member); }, row.member);
}

// Puts every field back to its reset value.
template <class Set, std::size_t N>
void ResetFields(Set& set, const Field<Set> (&rows)[N]) {
    ForEachField(set, rows, [](const Field<Set>& row, auto& field) {
        using T = std::remove_reference_t<decltype(field)>;
        if constexpr (std::is_same_v<T, CString>)
            field = row.resetText;
        else
            field = static_cast<T>(row.reset);
    });
}

// Writes every field into `section` of the host's profile, in one transaction. Without an application object
// nothing is written.
template <class Set, std::size_t N>
void SaveFields(const Set& set, const Field<Set> (&rows)[N], const char* section) {
    CWinApp* const profile = AfxGetApp();
    if (!profile) return;
    const RegistryTransaction together;
    ForEachField(set, rows, [&](const Field<Set>& row, const auto& field) {
        using T = std::decay_t<decltype(field)>;
        if constexpr (std::is_same_v<T, CString>)
            profile->WriteProfileString(section, row.name, field);
        else if constexpr (std::is_floating_point_v<T>)
            profile->WriteProfileString(section, row.name, FormatReal(row.format, field));
        else
            profile->WriteProfileInt(section, row.name, static_cast<int>(field));
    });
}

// Reads every field from `section` of the host's profile, all as of one moment; without an application object
// all are missing.
template <class Set, std::size_t N>
void LoadFields(Set& set, const Field<Set> (&rows)[N], const char* section) {
    CWinApp* const profile = AfxGetApp();
    const RegistryTransaction together(TransactionFor::Reading);
    ForEachField(set, rows, [&](const Field<Set>& row, auto& field) {
        using T = std::remove_reference_t<decltype(field)>;
        if constexpr (std::is_same_v<T, CString>) {
            if (profile) field = profile->GetProfileString(section, row.name, field);
        } else if constexpr (std::is_floating_point_v<T>) {
            float value = static_cast<float>(row.missing.value_or(0.0));
            const CString text = profile ? profile->GetProfileString(section, row.name) : CString();
            if (ParseReal(text, value) || row.missing) field = value;
        } else {
            const int missing = row.missing ? static_cast<int>(*row.missing) : static_cast<int>(field);
            field = static_cast<T>(profile ? profile->GetProfileInt(section, row.name, missing) : missing);
        }
    });
}

}  // namespace settings
