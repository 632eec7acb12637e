// A list of series, each written in the colour that it is drawn in.
#pragma once

#include <list>
#include <memory>
#include <vector>

#include "platform/dialog/CListBox.h"

class IPointSource;
class KDrawPropertyManager;

class KPointSourceListBox : public CListBox {
  public:
    // What is kept with an entry. The key is a copy: entries are drawn without a look at the series.
    struct Record {
        IPointSource* series;
        CString key;
    };

    // Null: all are written in the colour of the window's text.
    void SetManager(KDrawPropertyManager* properties) { manager = properties; }
    void Fill(const std::list<IPointSource*>& series);
    // Without entries and their records.
    void Clear();
    // In the order of the entries.
    std::vector<IPointSource*> Series() const;
    std::vector<IPointSource*> SelectedSeries() const;

    // To the end of the other list, the last one first. What stands in the place of the first of them, or at
    // the end, is selected then.
    void MoveSelected(KPointSourceListBox& to);
    // By one place; none when the first or the last of them cannot.
    void MoveSelectedUp();
    void MoveSelectedDown();

    void DrawItem(DRAWITEMSTRUCT* item) override;

  private:
    std::vector<int> SelectedPlaces() const;
    const Record* RecordAt(int place) const;
    // The entry's text and record at another place.
    void Insert(int place, const CString& text, const Record* record);
    void Shift(int place, int by);

    std::list<Record> records;
    KDrawPropertyManager* manager = nullptr;
};
