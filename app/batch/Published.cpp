#include "app/batch/Published.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "app/table/Records.h"

namespace app {

namespace {

struct Line {
    std::string_view text;  // without its line break
    std::string key;        // its x, and which of those with this x it is; empty: no row
    std::int64_t number;
};

// The records of an output: those above the rows, which have no keys, and the rest.
std::vector<Line> LinesOf(std::string_view text, const Table& table, std::size_t head) {
    std::vector<Line> lines;
    std::unordered_map<std::string, int> seen;
    std::string x;
    const auto isX = [&](int field) {
        const auto& parts = table.x.parts;
        return field == table.x.field ||
               std::any_of(parts.begin(), parts.end(), [&](const auto& part) { return part.field == field; });
    };
    Records records(text, table.layout.delimiter, table.layout.begin);
    for (Record record; records.Next(record,
                                     [&](int field, std::string_view cell) {
                                         if (isX(field)) x.append(cell).append(1, '\n');
                                     });
         x.clear()) {
        std::string_view line = text.substr(record.begin, record.end - record.begin);
        line = line.substr(0, LengthWithoutBreak(line));
        const bool isRow = lines.size() >= head && record.kind == Record::Row;
        lines.push_back({line, isRow ? x + std::to_string(seen[x]++) : "", record.line});
    }
    return lines;
}

class Merger {
  public:
    Merger(const std::vector<Line>& published, const std::vector<Line>& fresh, bool revise, Update& update)
        : published_(published), fresh_(fresh), revise_(revise), update_(update) {}

    void Merge(std::size_t head, const std::string& lineBreak, std::string& text) {
        std::unordered_map<std::string_view, std::size_t> places;
        for (std::size_t i = head; i < published_.size(); ++i)
            if (!published_[i].key.empty()) places.emplace(published_[i].key, i);
        std::unordered_map<std::size_t, std::size_t> freshOf;  // by published line
        for (std::size_t i = head; i < fresh_.size(); ++i)
            if (const auto place = places.find(fresh_[i].key); place != places.end())
                freshOf[place->second] = i;
        const auto put = [&](std::string_view line) { text.append(line).append(lineBreak); };
        std::size_t next = head;
        const auto putPublishedTo = [&](std::size_t end) {
            for (; next < end; ++next) {
                const auto same = freshOf.find(next);
                put(same == freshOf.end() ? Kept(published_[next], nullptr)
                                          : Kept(published_[next], &fresh_[same->second]));
            }
        };
        // Without one row in common all that is new comes behind.
        if (freshOf.empty()) putPublishedTo(published_.size());
        bool isNew = false;  // the row before; a remark goes with it
        for (std::size_t i = head; i < fresh_.size(); ++i) {
            const auto place = places.find(fresh_[i].key);
            const bool isRow = !fresh_[i].key.empty();
            if (isRow) isNew = place == places.end();
            if (place != places.end()) putPublishedTo(place->second + 1);
            if (!isNew) continue;
            // Rows that the input has lost stay before what follows them.
            if (IsBehindCommon(i, places)) putPublishedTo(published_.size());
            put(fresh_[i].text);
            update_.added += isRow;
        }
        putPublishedTo(published_.size());
    }

  private:
    // Whether no row from fresh line i on is published.
    bool IsBehindCommon(std::size_t i, const std::unordered_map<std::string_view, std::size_t>& places) {
        if (!lastCommon_) {
            lastCommon_ = 0;
            for (std::size_t k = 0; k < fresh_.size(); ++k)
                if (places.count(fresh_[k].key)) lastCommon_ = k;
        }
        return i > *lastCommon_;
    }

    std::string_view Kept(const Line& published, const Line* fresh) {
        if (!published.key.empty()) ++update_.kept;
        if (!fresh) {
            update_.absent += !published.key.empty();
            return published.text;
        }
        if (fresh->text == published.text) return published.text;
        update_.differences.push_back(
            {published.number, std::string(published.text), std::string(fresh->text)});
        return revise_ ? fresh->text : published.text;
    }

    const std::vector<Line>& published_;
    const std::vector<Line>& fresh_;
    bool revise_;
    Update& update_;
    std::optional<std::size_t> lastCommon_;
};

}  // namespace

Result<std::string> MergePublished(std::string_view published, std::string_view fresh, const Table& table,
                                   bool revise, Update& update) {
    const std::size_t head = table.layout.top.size();
    const auto before = LinesOf(published, table, head);
    const auto now = LinesOf(fresh, table, head);
    bool same = before.size() >= head && now.size() >= head;
    for (std::size_t i = 0; same && i < head; ++i) same = before[i].text == now[i].text;
    if (!same) return Refusal("its headings or the lines above them are not those of this cleaning");
    const std::string_view rest = fresh.substr(0, fresh.find('\n') + 1);
    const std::string lineBreak = rest.ends_with("\r\n") ? "\r\n" : rest.empty() ? "\r" : "\n";
    std::string text(fresh.substr(0, table.layout.begin));
    for (std::size_t i = 0; i < head; ++i) text.append(before[i].text).append(lineBreak);
    update.isDone = true;
    Merger(before, now, revise, update).Merge(head, lineBreak, text);
    return text;
}

}  // namespace app
