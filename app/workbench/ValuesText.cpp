#include "app/workbench/ValuesText.h"

#include <algorithm>
#include <limits>

#include "app/table/CellNumber.h"

namespace app {

namespace {

// Walks the points of one series that lie in the range, by ascending x.
class Walk {
  public:
    Walk(const FileSeries& series, const ValuesRange& range) : series_(series) {
        IPointSource& source = *series.source;
        scaleX_ = source.GetXScale();
        offset_ = source.GetOffset();
        const CPoint* const begin = source.GetData();
        const CPoint* const end = begin + source.GetCount();
        const auto user = [this](const CPoint& point) { return UserX(point.x); };
        next_ = std::partition_point(begin, end, [&](const CPoint& p) { return user(p) < range.from; });
        end_ = std::partition_point(next_, end, [&](const CPoint& p) { return user(p) <= range.to; });
    }

    bool AtEnd() const { return next_ == end_; }
    std::int32_t StoredX() const { return next_->x; }
    double UserX() const { return UserX(next_->x); }
    // The cell at `storedX`, empty where there is no point; goes on behind it.
    std::string Take(std::int32_t storedX) {
        if (AtEnd() || next_->x != storedX) return {};
        const CPoint point = *next_++;
        const unsigned short* const status = series_.source->GetStatus();
        if (status && (status[(next_ - 1) - series_.source->GetData()] & PS_DELETED)) return {};
        const double user = (double(point.y) + double(offset_.y)) / series_.source->GetYScale();
        return NumberText(series_.y.Real(user), series_.decimals);
    }

  private:
    double UserX(std::int32_t stored) const { return (double(stored) + double(offset_.x)) / scaleX_; }

    const FileSeries& series_;
    double scaleX_;
    CPoint offset_;
    const CPoint* next_;
    const CPoint* end_;
};

std::string Heading(const std::string& name, const std::string& unit) {
    return unit.empty() ? name : name + " [" + unit + "]";
}

std::string TextOfX(const XReading& x, double user) {
    return x.isTime ? IsoText(x.Time(user), x.zoned) : ShortNumber(x.Real(user));
}

}  // namespace

ValuesTable ValuesText(const SeriesFile& file, const std::vector<std::size_t>& series,
                       const ValuesRange& range) {
    ValuesTable table;
    table.text = Heading(file.x.name, file.x.unit);
    std::vector<Walk> walks;
    for (const std::size_t i : series) {
        const FileSeries& one = file.series[i];
        table.text += "\t" + Heading(one.source->GetName().GetString(), one.source->GetUnitY().GetString());
        walks.emplace_back(one, range);
    }
    table.text += "\n";
    for (;;) {
        const Walk* first = nullptr;
        for (const Walk& walk : walks)
            if (!walk.AtEnd() && (!first || walk.StoredX() < first->StoredX())) first = &walk;
        if (!first) return table;
        const std::int32_t storedX = first->StoredX();
        table.text += TextOfX(file.x, first->UserX());
        for (Walk& walk : walks) table.text += "\t" + walk.Take(storedX);
        table.text += "\n";
        ++table.rows;
    }
}

}  // namespace app
