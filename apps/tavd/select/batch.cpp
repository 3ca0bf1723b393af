#include "select/batch.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

#include "base/errors.h"
#include "base/paths.h"
#include "base/platform.h"
#include "base/progress.h"
#include "base/whole_file.h"
#include "select/hits.h"
#include "select/schedule.h"

namespace tavdhost {
namespace {

// Of duties that are asked at once. Their hits are in memory together.
constexpr std::size_t kMostDuties = 1024;
constexpr std::size_t kMostHitsAtOnce = 100'000;

// Lines of a file, for the progress bar; 0 where nobody sees one, or it is no file.
std::size_t count_lines(const std::string& path) {
  std::error_code none;
  if (!can_wipe_lines(Stream::kErrors) || !std::filesystem::is_regular_file(to_path(path), none)) return 0;
  std::ifstream file(to_path(path), std::ios::binary);
  std::vector<char> block(std::size_t{1} << 16);
  std::size_t lines = 0;
  while (file.read(block.data(), static_cast<std::streamsize>(block.size())), file.gcount() > 0) {
    lines += static_cast<std::size_t>(std::count(block.begin(), block.begin() + file.gcount(), '\n'));
  }
  return lines;
}

void refuse_as_target(const std::string& target, const std::string& read) {
  std::error_code problem;
  if (!std::filesystem::equivalent(to_path(read), to_path(target), problem)) return;
  throw UserError(target + " is what is read, expected another name for the selection");
}

class Batch {
 public:
  Batch(SelectCatalogue& catalogue, const ScheduleReading& reading, const ScheduleListener& listener)
      : catalogue_(catalogue), reading_(reading), listener_(listener) {}

  void add(ScheduledDuty read) {
    room_ = std::max(room_, static_cast<std::size_t>(read.request.duty.wanted));
    own_.push_back(std::move(read.own));
    requests_.push_back(std::move(read.request));
    if (requests_.size() >= kMostDuties || requests_.size() * room_ >= kMostHitsAtOnce) flush();
  }

  // Asks for what has been added.
  void flush() {
    if (requests_.empty()) return;
    catalogue_.complete(requests_);
    if (leave_out_unknown_classes()) catalogue_.complete(requests_);
    if (!is_given_up()) ask();
    own_.clear();
    requests_.clear();
    room_ = 1;
  }

  // Of a schedule that will not be written the rest is only read.
  bool is_given_up() const { return !reading_.skip_bad && !counts_.faults.empty(); }
  ScheduleFaults& faults() { return counts_.faults; }
  ScheduleCounts& counts() { return counts_; }

 private:
  bool leave_out_unknown_classes() {
    const std::size_t before = requests_.size();
    std::size_t kept = 0;
    for (std::size_t i = 0; i < before; ++i) {
      try {
        catalogue_.check_classes(requests_[i]);
      } catch (const UserError& error) {
        Faults faults;
        faults.add(reading_.schedule + ":" + own_[i].back() + ":1: " + error.what());
        counts_.faults.add(faults);
        continue;
      }
      if (kept != i) {
        own_[kept] = std::move(own_[i]);
        requests_[kept] = std::move(requests_[i]);
      }
      ++kept;
    }
    own_.resize(kept);
    requests_.resize(kept);
    return kept != before;
  }

  void ask() {
    std::vector<tavdn_duty> duties;
    duties.reserve(requests_.size());
    for (const Request& request : requests_) duties.push_back(request.duty);
    std::vector<tavdn_hit> hits(duties.size() * room_);
    std::vector<tavdn_fitting> fitting(duties.size());
    const int code = tavdn_select_many(catalogue_.get(), duties.size(), duties.data(), room_, hits.data(),
                                       fitting.data(), nullptr, reading_.threads, nullptr);
    if (code == TAVDN_NO_MEMORY) throw std::bad_alloc();
    if (code != TAVDN_OK) throw std::logic_error(tavdn_message("tavdn_select_many", code));
    for (std::size_t i = 0; i < duties.size(); ++i) {
      const auto first = hits.begin() + static_cast<std::ptrdiff_t>(i * room_);
      const Selected selected{fitting[i].products, {first, first + fitting[i].hits}, {}};
      listener_.answer({own_[i], catalogue_.get(), duties[i], selected, why_not(duties[i], selected)});
      ++counts_.duties;
      if (selected.hits.empty()) ++counts_.without;
    }
  }

  std::string why_not(const tavdn_duty& duty, const Selected& selected) const {
    if (!reading_.explain || !selected.hits.empty()) return {};
    return nearest_reason(select_one(catalogue_.get(), duty, true).reasons);
  }

  SelectCatalogue& catalogue_;
  const ScheduleReading& reading_;
  const ScheduleListener& listener_;
  std::vector<std::vector<std::string>> own_;
  std::vector<Request> requests_;
  std::size_t room_ = 1;
  ScheduleCounts counts_;
};

std::string lines_text(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " line" : " lines");
}

void read_all(TableLines& lines, Schedule& schedule, const std::string& path, Batch& batch) {
  Progress progress("Selecting", count_lines(path));
  for (std::optional<Source> line = lines.next(); line; line = lines.next()) {
    Faults faults;
    std::optional<ScheduledDuty> read = schedule.read(*line, faults);
    if (!read) {
      batch.faults().add(faults);
    } else if (!batch.is_given_up()) {
      batch.add(std::move(*read));
    }
    progress.step();
  }
  batch.flush();
}

}  // namespace

ScheduleCounts answer_schedule(SelectCatalogue& catalogue, const Request& usual,
                               const ScheduleReading& reading, const ScheduleListener& listener) {
  refuse_as_target(reading.target, reading.schedule);
  refuse_as_target(reading.target, catalogue.path());
  std::ifstream file(to_path(reading.schedule), std::ios::binary);
  if (!file) throw UserError(reading.schedule + ": cannot be opened");
  TableLines lines(file, reading.schedule);
  const std::optional<Source> heading = lines.next();
  if (!heading)
    throw UserError(reading.schedule + ": an empty schedule, expected a heading and lines of duties");
  Schedule schedule(*heading, usual);
  listener.heading(schedule.own_names());
  Batch batch(catalogue, reading, listener);
  read_all(lines, schedule, reading.schedule, batch);
  if (batch.is_given_up()) {
    throw UserError(lines_text(batch.faults().lines()) + " of " + reading.schedule +
                    " not as expected, nothing is written; --skip-bad leaves them out\n" +
                    batch.faults().listing());
  }
  if (batch.counts().duties == 0 && batch.faults().empty()) {
    throw UserError(reading.schedule + ": no lines below the heading, expected some");
  }
  return std::move(batch.counts());
}

void tell_left_out(const ScheduleCounts& counts, const std::string& schedule) {
  if (counts.faults.empty()) return;
  std::cerr << "tavd: " << lines_text(counts.faults.lines()) << " of " << schedule << " left out\n"
            << counts.faults.listing() << '\n';
}

std::string counts_text(const ScheduleCounts& counts) {
  return std::to_string(counts.duties) + (counts.duties == 1 ? " duty" : " duties") + ", " +
         (counts.without == 0 ? "all with a product that fits"
                              : std::to_string(counts.without) + " without a product that fits");
}

void select_for_schedule(SelectCatalogue& catalogue, const Request& usual, const BatchSettings& settings) {
  std::unique_ptr<OutputFile> target;
  const HitLines lines(settings.units);
  const auto out = [&]() -> std::ostream& { return target ? target->stream() : std::cout; };
  const ScheduleListener listener = {[&](const std::vector<std::string>& own_names) {
                                       if (!is_standard_output(settings.target))
                                         target = std::make_unique<OutputFile>(settings.target);
                                       std::string text;
                                       lines.heading(own_names, text);
                                       out() << text;
                                     },
                                     [&](const AnsweredDuty& answered) {
                                       std::string text;
                                       lines.add(answered.own, answered.catalogue, answered.duty,
                                                 answered.selected, answered.why_not, text);
                                       out() << text;
                                     }};
  const ScheduleCounts counts = answer_schedule(
      catalogue, usual,
      {settings.schedule, settings.skip_bad, settings.explain, settings.threads, settings.target}, listener);
  if (target) target->finish();
  tell_left_out(counts, settings.schedule);
  if (!is_standard_output(settings.target)) {
    std::cout << settings.target << ": " << counts_text(counts) << '\n';
  }
}

}  // namespace tavdhost
