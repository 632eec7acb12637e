#include "app/workbench/LiveSession.h"

#include <algorithm>
#include <cmath>

#include "app/table/CellNumber.h"

namespace app {

namespace {

// Derived values are truncated to counts; they have so many times finer ones than their operands.
constexpr double kFiner = 16;
constexpr double kMostCount = 2147483647.0;

// One decimal more than the first values are written with, as far as values ten thousand times as large still
// fit. The channels of a feed share it, so that their stored values can be combined.
int DecimalsFor(const LiveRows& rows) {
    double most = 1e-3;
    for (std::size_t i = 0; i < rows.cells.size(); ++i)
        if (const double value = std::fabs(rows.cells[i]); i % rows.width != 0 && std::isfinite(value))
            most = std::max(most, value);
    const int written = rows.decimals.empty() ? 0 : *std::ranges::max_element(rows.decimals);
    int decimals = std::clamp(written + 1, 0, 9);
    while (decimals > -9 && most * 1e4 * std::pow(10.0, decimals) > kMostCount) --decimals;
    return decimals;
}

}  // namespace

LiveSession::LiveSession(const LiveWishes& wishes) : wishes_(wishes), wanted_(wishes.derived) {
    for (const FeedAddress& address : wishes_.addresses) {
        received_.emplace_back().source =
            std::make_unique<LiveSource>(address, LiveSource::Wishes{wishes_.read, true, {}});
        file_.title += (file_.title.empty() ? "" : ", ") + address.shown;
    }
    for (Received& each : received_) each.source->Start();
}

LiveSession::~LiveSession() {
    for (Received& each : received_) each.source->AskToStop();
    for (Received& each : received_) each.source->Stop();
    // Derived series end before what they are made of.
    while (!file_.series.empty()) file_.series.pop_back();
}

COnlineSource& LiveSession::Series(std::size_t i) const {
    return static_cast<COnlineSource&>(*file_.series[i].source);
}

void LiveSession::TakeRows() {
    for (Received& each : received_) {
        each.lost |= each.known && each.source->State().feed != FeedState::Connected;
        each.source->Take(rowsTaken_);
        if (rowsTaken_.Count() == 0 || each.refused) continue;
        if (!each.known) MakeChannels(each, rowsTaken_);
        if (!each.refused) Append(each, rowsTaken_);
    }
    TakeRate();
}

std::size_t LiveSession::Waiting() const {
    std::size_t rows = 0;
    for (const Received& each : received_) rows += each.source->Waiting();
    return rows;
}

std::string LiveSession::FreeName(std::string name) const {
    const std::string wanted = name;
    for (int i = 2; FindSeries(name); ++i) name = wanted + " (" + std::to_string(i) + ")";
    return name;
}

// Names of settings ignore case.
std::optional<std::size_t> LiveSession::FindSeries(const std::string& name) const {
    for (std::size_t i = 0; i < file_.series.size(); ++i)
        if (file_.series[i].source->GetName().CompareNoCase(name.c_str()) == 0) return i;
    return {};
}

std::size_t LiveSession::AddSeries(std::unique_ptr<COnlineSource> source, int decimals) {
    file_.series.push_back({std::move(source), AxisReading(), std::max(0, decimals)});
    return file_.series.size() - 1;
}

void LiveSession::MakeChannels(Received& received, const LiveRows& rows) {
    const auto shape = received.source->Shape();
    const bool times = shape->IsArrival() || shape->HasTimes();
    if (hasOrigin_ && times != file_.x.isTime) {
        received.refused = true;
        return;
    }
    if (!hasOrigin_) {
        file_.x.isTime = times;
        file_.x.zoned = true;
        file_.x.name = times ? "time" : shape->choice.x.name;
        file_.x.unit = times ? "" : shape->choice.x.unit;
        file_.x.unitsPerReal = 1;
        hasOrigin_ = true;
        MoveOrigin(rows.cells[0]);
    }
    const int decimals = DecimalsFor(rows);
    const double scale = std::pow(10.0, decimals);
    for (std::size_t i = 0; i < shape->choice.columns.size(); ++i) {
        const Column& column = shape->choice.columns[i];
        const std::string own =
            column.name == std::to_string(column.field + 1) ? "channel " + column.name : column.name;
        auto source =
            std::make_unique<COnlinePublishSource>(CString(FreeName(own)), kCounts, scale, wishes_.capacity,
                                                   "s", CString(column.unit), COnlineSource::Absolute);
        COnlinePublishSource* const published = source.get();
        received.channels.push_back({published, AddSeries(std::move(source), rows.decimals[i]), scale});
    }
    received.known = true;
    MakeDerived();
}

void LiveSession::MakeDerived() {
    std::erase_if(wanted_, [this](const std::string& text) {
        for (std::size_t at = text.find_first_of("+-", 1); at != std::string::npos;
             at = text.find_first_of("+-", at + 1)) {
            const auto a = FindSeries(text.substr(0, at));
            const auto b = FindSeries(text.substr(at + 1));
            if (a && b) return AddDerived(text[at] == '+' ? OPERATION_ADD : OPERATION_SUBTRACT, *a, *b);
        }
        return false;
    });
}

LiveSession::Channel* LiveSession::ChannelOf(std::size_t series) {
    for (Received& each : received_)
        for (Channel& channel : each.channels)
            if (channel.series == series) return &channel;
    return nullptr;
}

bool LiveSession::IsReceived(std::size_t i) const {
    return const_cast<LiveSession*>(this)->ChannelOf(i) != nullptr;
}

bool LiveSession::AddDerived(operationtype operation, std::size_t a, std::size_t b) {
    const Channel* const first = ChannelOf(a);
    const Channel* const second = ChannelOf(b);
    if (!first || !second) return false;
    const std::string name = std::string(first->source->GetName()) +
                             (operation == OPERATION_ADD ? " + " : " - ") +
                             second->source->GetName().GetString();
    const double scale = std::max(first->scale, second->scale);
    const bool sameUnit = first->source->GetUnitY() == second->source->GetUnitY();
    auto derived = std::make_unique<COnlineAritmetricSource>(
        CString(FreeName(name)), kCounts, scale * kFiner, wishes_.capacity, "s",
        sameUnit ? first->source->GetUnitY() : CString(), COnlineSource::Absolute);
    derived->SetOperationType(operation);
    derived->AddOperand(first->source, 0);
    derived->AddOperand(second->source, 1);
    // The channels of a row come in their order: the later one has both values of the row.
    if (a != b) (a < b ? first : second)->source->Detach(derived.get());
    AddSeries(std::move(derived), std::max(file_.series[a].decimals, file_.series[b].decimals));
    return true;
}

bool LiveSession::AddCorrected(std::size_t i, const Correction& correction) {
    Channel* const channel = ChannelOf(i);
    if (!channel) return false;
    // Stored values are combined as they are.
    const auto sameScale = [&](std::size_t each) { return Series(each).GetYScale() == channel->scale; };
    if (!std::ranges::all_of(correction.add, sameScale) ||
        !std::ranges::all_of(correction.subtract, sameScale))
        return false;
    auto source = std::make_unique<KDataAcqSource>(
        CString(FreeName(std::string(channel->source->GetName()) + " corrected")), kCounts, channel->scale,
        wishes_.capacity, "s", channel->source->GetUnitY(), COnlineSource::Absolute);
    source->setInvertY(correction.invert);
    source->setFixedOffsetY(correction.offset);
    for (const std::size_t each : correction.add) source->Add(&Series(each));
    for (const std::size_t each : correction.subtract) source->Subtract(&Series(each));
    KDataAcqSource* const corrected = source.get();
    channel->corrected.push_back({AddSeries(std::move(source), file_.series[i].decimals), corrected});
    return true;
}

void LiveSession::Append(Received& received, const LiveRows& rows) {
    if (received.lost)
        for (Channel& channel : received.channels) channel.gap = true;
    received.lost = false;
    for (std::size_t row = 0; row < rows.Count(); ++row) {
        const double* const cells = rows.cells.data() + row * rows.width;
        const std::int32_t x = StoredX(cells[0]);
        for (std::size_t i = 0; i < received.channels.size(); ++i)
            AppendSample(received.channels[i], x, cells[i + 1]);
        // Behind all of the row: what is added or subtracted is of the same row.
        for (std::size_t i = 0; i < received.channels.size(); ++i)
            for (const Corrected& each : received.channels[i].corrected)
                if (std::isfinite(cells[i + 1])) each.source->AddData(x / kCounts, cells[i + 1]);
        newest_ = std::max(newest_.value_or(x), x);
    }
    rows_ += rows.Count();
}

void LiveSession::AppendSample(Channel& channel, std::int32_t x, double value) {
    if (!std::isfinite(value)) {
        channel.gap = true;
        return;
    }
    if (channel.gap) {
        MarkGap(channel.series);
        for (const Corrected& each : channel.corrected) MarkGap(each.series);
    }
    POINT sample = CPoint(x, RoundHalfAway(value * channel.scale));
    channel.source->AddData(&sample, 1);
    channel.gap = false;
}

// Before the sample that comes next; what the ring has lost is forgotten.
void LiveSession::MarkGap(std::size_t i) {
    COnlineSource& source = Series(i);
    auto& numbers = file_.series[i].gapNumbers;
    const std::uint64_t oldest = source.GetAppended() - static_cast<std::uint64_t>(source.GetCount());
    std::erase_if(numbers, [oldest](std::uint64_t number) { return number <= oldest; });
    numbers.push_back(source.GetAppended());
}

std::int32_t LiveSession::StoredX(double x) {
    const auto counts = [this](double at) {
        return file_.x.isTime ? (at - static_cast<double>(file_.x.origin)) * (kCounts / kSecond)
                              : (at - originNumber_) * kCounts;
    };
    constexpr double kMost = 2000000000;
    if (std::fabs(counts(x)) > kMost) MoveOrigin(x);
    return RoundHalfAway(counts(x));
}

// The counts of what is kept are counted from `x` on; what lies too far off goes.
void LiveSession::MoveOrigin(double x) {
    double by = 0;
    if (file_.x.isTime) {
        const auto origin = static_cast<Microseconds>(std::floor(x / kSecond)) * kSecond;
        by = static_cast<double>(origin - file_.x.origin) / kSecond * kCounts;
        file_.x.origin = origin;
    } else {
        by = (std::floor(x) - originNumber_) * kCounts;
        originNumber_ = file_.x.shift = std::floor(x);
    }
    newest_.reset();
    for (FileSeries& each : file_.series) {
        auto& source = static_cast<COnlineSource&>(*each.source);
        std::vector<CPoint> kept;
        const CPoint* const points = source.GetData();
        for (long i = 0; i < source.GetCount(); ++i)
            if (const double moved = points[i].x - by; std::fabs(moved) < kMostCount)
                kept.emplace_back(static_cast<int>(moved), points[i].y);
        source.Clear();
        source.COnlineSource::AddData(kept.data(), static_cast<long>(kept.size()));
        each.gapNumbers.clear();
    }
}

std::optional<Failure> LiveSession::Record(const std::string& path, Existing existing) {
    EndRecording();
    for (std::size_t i = 0; i < received_.size(); ++i) {
        auto recorder = Recorder::Begin(RecordingName(path, i, received_.size()), existing);
        if (!recorder) {
            EndRecording();
            return recorder.Error();
        }
        received_[i].source->Record(std::move(*recorder));
    }
    recording_ = true;
    return {};
}

std::optional<Failure> LiveSession::EndRecording() {
    std::optional<Failure> failure;
    for (Received& each : received_)
        if (auto fault = each.source->EndRecording()) failure = std::move(fault);
    recording_ = false;
    return failure;
}

void LiveSession::TakeRate() {
    const auto now = Clock::now();
    const double seconds = std::chrono::duration<double>(now - rateSince_).count();
    if (seconds < 1) return;
    rate_ = static_cast<double>(rows_ - rateRows_) / seconds;
    rateRows_ = rows_;
    rateSince_ = now;
}

std::string LiveSession::StatusText() const {
    std::string text = NumberText(rate_, rate_ < 10 ? 1 : 0) + " rows a second";
    std::string values;
    Microseconds last = 0;
    std::uint64_t lost = 0;
    std::uint64_t recorded = 0;
    for (const Received& each : received_) {
        const LiveState state = each.source->State();
        for (std::size_t i = 1; i < state.lastRow.size() && i <= 4; ++i)
            values += (values.empty() ? "" : ", ") +
                      (std::isfinite(state.lastRow[i]) ? ShortNumber(state.lastRow[i]) : "none");
        last = std::max(last, state.lastArrival);
        lost += state.lines.lost + state.unshown;
        recorded += state.recorded;
    }
    if (!values.empty()) text += ";  last " + values;
    if (last > 0)
        text += ",  " + NumberText(std::max(0.0, double(LiveSource::Now() - last) / kSecond), 1) + " s ago";
    text += ";  " + Counted(static_cast<std::int64_t>(lost), "line") + " lost";
    if (recording_) text += ";  recording: " + Counted(static_cast<std::int64_t>(recorded), "row");
    return text;
}

std::string LiveSession::TroubleText() const {
    std::string text;
    const auto add = [&](const Received& each, const std::string& what) {
        if (!what.empty()) text += (text.empty() ? "" : "\n") + each.source->Name() + ": " + what;
    };
    for (const Received& each : received_) {
        const LiveState state = each.source->State();
        add(each, state.message);
        if (state.feed == FeedState::Ended && state.message.empty()) add(each, "has ended");
        add(each, state.recordFault);
        if (!each.known && state.lines.lost > 0) add(each, state.lines.fault);
        if (each.refused) add(each, "its x is not of the kind that the other sources have");
    }
    return text;
}

}  // namespace app
