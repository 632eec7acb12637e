// Filling empty cells: a cell becomes a point on the line between the valid points on both sides.
#include <algorithm>
#include <new>
#include <numeric>

#include "app/batch/StepRunner.h"
#include "app/table/CellNumber.h"

namespace app {

namespace {

std::vector<std::int64_t> RowsInOrder(const XAxis& axis) {
    std::vector<std::int64_t> rows(axis.stored.size());
    std::iota(rows.begin(), rows.end(), std::int64_t{0});
    if (!axis.sorted)
        std::stable_sort(rows.begin(), rows.end(), [&](std::int64_t a, std::int64_t b) {
            return axis.stored[static_cast<std::size_t>(a)] < axis.stored[static_cast<std::size_t>(b)];
        });
    return rows;
}

}  // namespace

void StepRunner::FindEmptyCells() {
    if (column_.missing == 0) return;
    long points = 0;
    for (const std::int64_t row : RowsInOrder(axis_)) {
        const double value = column_.values[static_cast<std::size_t>(row)];
        if (HasValue(value)) {
            ++points;
        } else if (value != kUnreadable) {
            empty_.push_back({axis_.stored[static_cast<std::size_t>(row)], points});
            emptyRows_.push_back(row);
        }
    }
}

// The empty cells meant that have a valid point on either side, no farther from one another than `longest`; a
// row that is short may lack the cell itself.
std::vector<std::size_t> StepRunner::CellsToFill(double longest, std::int64_t& left) const {
    const selections::Samples samples = MakeSamples();
    const selections::ValidPoints valid(samples);
    std::vector<std::size_t> cells;
    for (std::size_t e = 0; e < empty_.size(); ++e) {
        if (!IsSelected(samples.count + static_cast<long>(e))) continue;
        const long behind = valid.CountBefore(empty_[e].pointsBefore);
        const bool between = behind > 0 && behind < valid.Count() && !table_.IsShort(emptyRows_[e]);
        const auto length = between ? std::int64_t{valid.X(behind)} - valid.X(behind - 1) : 0;
        if (length > 0 && double(length) / axis_.scale.Scale() <= longest)
            cells.push_back(e);
        else
            ++left;
    }
    return cells;
}

// Puts points into the cells, whose indices become `added`, and moves what is kept by index along.
void StepRunner::InsertPoints(const std::vector<std::size_t>& cells, std::vector<long>& added) {
    const long oldCount = source_.GetCount();
    const auto newCount = oldCount + static_cast<long>(cells.size());
    const std::vector<CPoint> points(source_.GetData(), source_.GetData() + oldCount);
    const std::vector<unsigned short> status(source_.GetStatus(), source_.GetStatus() + oldCount);
    std::vector<int> codes;
    if (const int* const kept = source_.GetRejection()) codes.assign(kept, kept + oldCount);
    std::vector<selections::EmptyPlace> stillEmpty;
    std::vector<std::int64_t> stillEmptyRows;
    std::vector<long> placeNow(points.size() + empty_.size());  // of each old point and empty cell

    source_.clear();
    std::size_t next = 0;  // of the old points
    const auto takePointsUpTo = [&](long end) {
        for (; static_cast<long>(next) < end; ++next) {
            placeNow[next] = source_.GetCount();
            source_.push_back(points[next]);
        }
    };
    std::size_t cell = 0;
    for (std::size_t e = 0; e < empty_.size(); ++e) {
        takePointsUpTo(empty_[e].pointsBefore);
        if (cell < cells.size() && cells[cell] == e) {
            placeNow[points.size() + e] = source_.GetCount();
            added.push_back(source_.GetCount());
            source_.push_back(CPoint(empty_[e].x, 0));
            ++cell;
        } else {
            placeNow[points.size() + e] = newCount + static_cast<long>(stillEmpty.size());
            stillEmpty.push_back({empty_[e].x, source_.GetCount()});
            stillEmptyRows.push_back(emptyRows_[e]);
        }
    }
    takePointsUpTo(oldCount);
    if (source_.GetCount() != newCount) throw std::bad_alloc();

    const auto places = newCount + static_cast<long>(stillEmpty.size());
    const auto move = [&](PlaceSet& set) {
        PlaceSet moved(places);
        set.ForEach([&](long place) { moved.Add(placeNow[static_cast<std::size_t>(place)]); });
        set = std::move(moved);
    };
    if (selection_) move(*selection_);
    if (keepsJudged_) move(series_.judged);
    move(series_.filled);
    for (const long point : added) series_.filled.Add(point);
    std::vector<std::int32_t> before(static_cast<std::size_t>(newCount));
    int* const newCodes = source_.GetRejection();
    if (newCodes) std::fill_n(newCodes, newCount, 0);
    for (std::size_t i = 0; i < points.size(); ++i) {
        before[static_cast<std::size_t>(placeNow[i])] = series_.before[i];
        source_.GetStatus()[placeNow[i]] = status[i];
        if (newCodes) newCodes[placeNow[i]] = codes[i];
    }
    series_.before = std::move(before);
    for (auto& point : series_.rowPoint)
        if (point != Series::kNoPoint)
            point = static_cast<std::int32_t>(placeNow[static_cast<std::size_t>(point)]);
    for (std::size_t i = 0; i < cells.size(); ++i)
        series_.rowPoint[static_cast<std::size_t>(emptyRows_[cells[i]])] =
            static_cast<std::int32_t>(added[i]);
    empty_ = std::move(stillEmpty);
    emptyRows_ = std::move(stillEmptyRows);
}

Result<StepResult> StepRunner::FillGaps(const Step& step) {
    const auto longest = RealWaveLength(step.waveLength);
    if (!longest) return longest.Error();
    std::int64_t left = 0;
    const auto cells = CellsToFill(*longest, left);
    StepResult result;
    result.cells = static_cast<std::int64_t>(cells.size());
    if (left > 0)
        result.note = Counted(left, "cell") + (left == 1 ? " stays" : " stay") +
                      " empty: no value on one side, or a longer gap";
    if (cells.empty()) {
        if (left == 0) result.note = selection_ ? "no empty cell is selected" : "there is no empty cell";
        return result;
    }
    std::vector<long> added;
    InsertPoints(cells, added);
    // Rejected points carry no line either.
    unsigned short* status = source_.GetStatus();
    std::vector<unsigned short> supports(status, status + source_.GetCount());
    for (auto& word : supports)
        if (word & PS_REJECTED) word |= PS_DELETED;
    InterpolatePoints(source_.GetData(), source_.GetCount(), added.data(), static_cast<long>(added.size()),
                      source_.GetYScale(), supports.data());
    for (const long point : added) status[point] = supports[static_cast<std::size_t>(point)];
    return result;
}

}  // namespace app
