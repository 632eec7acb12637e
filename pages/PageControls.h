// Pages as tables: one row per control and the member that it shows, walked to exchange both.
//
//   using L = CTiledLayoutProperties;
//   constexpr Control<L> kControls[] = {
//       IntEdit(4012, &L::NumRows, 2, 20),
//       Edit(4143, &L::distance),
//       Check(4145, &L::showWindow),
//   };
//   void CTiledLayoutPage::DoDataExchange(CDataExchange* exchange) {
//       TavinPage::DoDataExchange(exchange);
//       if (properties) ExchangeControls(*exchange, *properties, kControls);
//   }
//
// Rows are exchanged in their order; the first value that is refused ends an exchange and leaves its member
// as it was. What a row cannot say (a control that depends on another) is code beside the table.
#pragma once

#include <cstddef>
#include <variant>

#include "platform/dialog/CDataExchange.h"

namespace pages {

enum class Shown {
    Text,   // an edit or a static text
    Check,  // 0 or 1
    Radio,  // the place in the group that begins with the control
    Place,  // of the entry of a list
    Data,   // kept with the entry of a list
};

template <class Set>
struct Control {
    using Member = std::variant<int Set::*, float Set::*, double Set::*, CString Set::*>;
    UINT id;
    Shown shown;
    Member member;
    // Of an integer: none when the first exceeds the second.
    int least = 1;
    int most = 0;
};

// The text of an edit or of a static text.
template <class Set, class T>
constexpr Control<Set> Edit(UINT id, T Set::*member) {
    return {id, Shown::Text, member};
}
template <class Set>
constexpr Control<Set> IntEdit(UINT id, int Set::*member, int least, int most) {
    return {id, Shown::Text, member, least, most};
}
template <class Set>
constexpr Control<Set> Check(UINT id, int Set::*member) {
    return {id, Shown::Check, member};
}
// The first radio button of a group.
template <class Set>
constexpr Control<Set> Radio(UINT id, int Set::*member) {
    return {id, Shown::Radio, member};
}
template <class Set>
constexpr Control<Set> ListPlace(UINT id, int Set::*member) {
    return {id, Shown::Place, member};
}
template <class Set>
constexpr Control<Set> ListData(UINT id, int Set::*member) {
    return {id, Shown::Data, member};
}

template <class Set>
void ExchangeInteger(CDataExchange& exchange, const Control<Set>& row, int& value) {
    switch (row.shown) {
        case Shown::Text:
            DDX_Text(&exchange, row.id, value);
            if (row.least <= row.most) DDV_MinMaxInt(&exchange, value, row.least, row.most);
            break;
        case Shown::Check:
            DDX_Check(&exchange, row.id, value);
            break;
        case Shown::Radio:
            DDX_Radio(&exchange, row.id, value);
            break;
        case Shown::Place:
            DDX_CBIndex(&exchange, row.id, value);
            break;
        case Shown::Data:
            DDX_CBItemData(&exchange, row.id, value);
    }
}

template <class Set, std::size_t N>
void ExchangeControls(CDataExchange& exchange, Set& set, const Control<Set> (&rows)[N]) {
    for (const Control<Set>& row : rows) {
        const auto move = [&](auto member) {
            auto value = set.*member;
            if constexpr (std::is_same_v<decltype(value), int>)
                ExchangeInteger(exchange, row, value);
            else
                DDX_Text(&exchange, row.id, value);
            if (!exchange.HasFailed()) set.*member = value;
        };
        std::visit(move, row.member);
        if (exchange.HasFailed()) return;
    }
}

}  // namespace pages
