#include "window/session.h"

#include <algorithm>

#include "model/suggestion.h"
#include "tavd/attributes.h"
#include "tavd/tavca.h"
#include "window/controls.h"
#include "window/resource.h"

namespace viewer {
namespace {

// Sets a flag for as long as it lives.
class Raised {
 public:
  explicit Raised(bool& flag) : flag_(flag), former_(flag) { flag_ = true; }
  ~Raised() { flag_ = former_; }
  Raised(const Raised&) = delete;
  Raised& operator=(const Raised&) = delete;

 private:
  bool& flag_;
  bool former_;
};

int selected_row(HWND host, int id, UINT message) {
  return static_cast<int>(SendDlgItemMessageW(host, id, message, 0, 0));
}

std::optional<float> number_in(HWND host, int id, const Unit& unit) {
  const std::optional<double> shown = parsed(text_of(host, id));
  return shown ? std::optional(static_cast<float>(hosts::to_base(*shown, unit))) : std::nullopt;
}

std::wstring shown_number(const std::optional<float>& base, const Unit& unit) {
  return base ? plain(hosts::from_base(*base, unit)) : std::wstring();
}

}  // namespace

Session::Session(HWND host, HINSTANCE module)
    : host_(host), panes_(module), fields_(host), tree_(GetDlgItem(host, IDC_PRODUCTS)) {
  panes_.create(host, IDC_FIRST_DRAWING);
  fields_.clear();
  list_flow_units();
  list_units(host_, IDC_PRESSURE_UNIT, pressure_units(), pressure_unit_);
  update();
}

void Session::open(const std::wstring& path) {
  auto opened = std::make_unique<Database>(path);
  const RecordKey family = family_key_;
  const RecordKey size = record_ ? database_->key(record_) : RecordKey();
  {
    const Raised writing(writing_);
    tree_.clear();
    panes_.clear();
    SendDlgItemMessageW(host_, IDC_SIZES, LB_RESETCONTENT, 0, 0);
    record_ = Record();
    product_ = Product{};
    list_flow_units();
    sizes_.clear();
    family_key_ = {};
    catalogue_.reset();
    database_ = std::move(opened);
    tree_.show(*database_);
  }
  update();
  tree_.select(family);
  if (!record_) fields_.clear();
  if (family_key_ == family) show_family({family, size});
}

void Session::reload() {
  if (database_) open(std::wstring(database_->path()));
}

const Catalogue& Session::catalogue() {
  if (!database_) throw UserError(L"No database is open.");
  if (!catalogue_) catalogue_ = std::make_unique<Catalogue>(*database_);
  return *catalogue_;
}

std::vector<std::string> Session::classes() const {
  return database_ ? database_->classes() : std::vector<std::string>();
}

void Session::show(const Found& found) {
  std::optional<TreeChoice> choice;
  {
    const Raised writing(writing_);
    if (database_) choice = tree_.select_product(found.key);
  }
  if (!choice)
    throw UserError(wide(found.key.object_id) + L" is not in the database any more: reload it, F5.");
  show_family(*choice);
  point_ = found.point;
  flow_typed_ = true;
  pressure_typed_ = true;
  tavca_setroomdamp(point_.room_damping);
  fields_.take_back();
  build();
}

DutyTexts Session::suggested_duty() const {
  const bool by_velocity = product_.flow.isvelocity != 0;
  DutyTexts texts{};
  texts.flow_unit = &flow_units()[static_cast<std::size_t>(flow_unit_)];
  texts.pressure_unit = &pressure_unit();
  if (!by_velocity) texts.flow = shown_number(point_.qv, *texts.flow_unit);
  texts.pressure = shown_number(point_.dp, *texts.pressure_unit);
  return texts;
}

void Session::tree_selected() {
  const std::optional<TreeChoice> choice = database_ ? tree_.choice() : std::nullopt;
  if (!writing_ && choice) show_family(*choice);
}

void Session::size_selected() {
  if (!writing_ && database_) show_selected_size();
}

void Session::value_chosen() {
  if (!writing_) build();
}

void Session::unit_chosen() {
  if (writing_) return;
  pressure_unit_ = selected_row(host_, IDC_PRESSURE_UNIT, CB_GETCURSEL);
  if (product_.flow.isvelocity == 0) flow_unit_ = selected_row(host_, IDC_FLOW_UNIT, CB_GETCURSEL);
  build();
}

void Session::flow_typed() {
  if (writing_) return;
  flow_typed_ = true;
  point_.qv = number_in(host_, IDC_FLOW, flow_unit());
  if (!pressure_typed_) {
    suggest();
    const Raised writing(writing_);
    set_text(host_, IDC_PRESSURE, shown_number(point_.dp, pressure_unit()));
  }
  panes_.move_point(record_, settings());
  update();
}

void Session::pressure_typed() {
  if (writing_) return;
  pressure_typed_ = true;
  point_.dp = number_in(host_, IDC_PRESSURE, pressure_unit());
  panes_.move_point(record_, settings());
  update();
}

void Session::take_back() {
  flow_typed_ = false;
  pressure_typed_ = false;
  point_.room_damping = hosts::kRoomDamping;
  tavca_setroomdamp(point_.room_damping);
  fields_.take_back();
  build();
}

bool Session::take_back(HWND field) {
  const int id = GetDlgCtrlID(field);
  if (id == IDC_FLOW || id == IDC_PRESSURE) {
    bool& typed = id == IDC_FLOW ? flow_typed_ : pressure_typed_;
    if (!typed) return false;
    typed = false;
  } else if ((id != IDC_FIRST_VALUE && id != IDC_SECOND_VALUE) || !fields_.take_back(field)) {
    return false;
  }
  build();
  return true;
}

PageContents Session::page() const {
  PageContents contents{product_.listed.code, product_.listed.description, lines_, {}};
  for (const Drawing drawing : kDrawings) {
    contents.drawn[static_cast<std::size_t>(drawing)] = panes_.is_drawn(drawing);
  }
  // They stand in the heading already.
  std::erase_if(contents.lines, [&](const ResultLine& line) {
    return line.cells.size() == 1 &&
           (line.cells.front() == contents.title || line.cells.front() == contents.subtitle);
  });
  return contents;
}

void Session::show_family(const TreeChoice& choice) {
  const bool other = choice.family != family_key_;
  if (!other && choice.size.object_id.empty()) return;
  const Raised writing(writing_);
  if (other) {
    family_key_ = choice.family;
    sizes_ = database_->sizes(family_key_);
    panes_.start(host_, IDC_SIZES, database_->handle(), database_->find(family_key_));
  }
  const auto size = std::ranges::find(sizes_, choice.size,
                                      [](const Listed& listed) -> const RecordKey& { return listed.key; });
  if (size != sizes_.end()) {
    SendDlgItemMessageW(host_, IDC_SIZES, LB_SETCURSEL, static_cast<WPARAM>(size - sizes_.begin()), 0);
  }
  show_selected_size();
}

// A product that lists no size at all is shown itself.
void Session::show_selected_size() {
  const Raised writing(writing_);
  const int row = selected_row(host_, IDC_SIZES, LB_GETCURSEL);
  const bool listed = row >= 0 && row < static_cast<int>(sizes_.size());
  const bool by_velocity = product_.flow.isvelocity != 0;
  record_ = database_->find(listed ? sizes_[static_cast<std::size_t>(row)].key : family_key_);
  product_ = load_product(*database_, record_);
  if (by_velocity != (product_.flow.isvelocity != 0)) {
    flow_typed_ = false;  // what was typed was another quantity
    list_flow_units();
  }
  panes_.build(record_, settings());
  fields_.fill(product_);
  build();
}

// Builds the drawings with the values that are chosen, at the point typed or suggested, and all that depends
// on them.
void Session::build() {
  choose(product_, fields_.choices());
  suggest();
  show_point();
  panes_.build(record_, settings());
  update();
}

void Session::list_flow_units() {
  const bool by_velocity = product_.flow.isvelocity != 0;
  if (by_velocity) {
    list_units(host_, IDC_FLOW_UNIT, {&velocity_unit(), 1}, 0);
  } else {
    list_units(host_, IDC_FLOW_UNIT, flow_units(), flow_unit_);
  }
  EnableWindow(GetDlgItem(host_, IDC_FLOW_UNIT), by_velocity ? FALSE : TRUE);
}

void Session::suggest() {
  const bool calculates = has_flow_data(product_);
  if (!flow_typed_) point_.qv = calculates ? std::optional(suggested_flow(product_)) : std::nullopt;
  if (!pressure_typed_) {
    point_.dp =
        calculates && point_.qv ? std::optional(suggested_pressure(product_, *point_.qv)) : std::nullopt;
  }
}

void Session::show_point() {
  const Raised writing(writing_);
  set_text(host_, IDC_FLOW, shown_number(point_.qv, flow_unit()));
  set_text(host_, IDC_PRESSURE, shown_number(point_.dp, pressure_unit()));
}

void Session::update() {
  lines_.clear();
  if (record_) {
    lines_.push_back({L"Product", {product_.listed.code}});
    if (!product_.listed.description.empty()) {
      lines_.push_back({L"Description", {product_.listed.description}});
    }
    std::ranges::move(results_of(product_, point_, fields_.throw_value(),
                                 flow_units()[static_cast<std::size_t>(flow_unit_)], pressure_unit()),
                      std::back_inserter(lines_));
  }
  set_text(host_, IDC_RESULTS, text_of(lines_));
  std::wstring status = L"Open a product database: Ctrl+O, or drop its file here.";
  if (database_) status = record_ ? remark_of(product_, point_) : L"No product is selected.";
  const RecordKey& key = product_.listed.key;
  if (status.empty()) status = wide(key.class_id) + L' ' + wide(key.object_id);
  set_text(host_, IDC_STATUS, status);
  show_captions();
}

void Session::show_captions() {
  std::int16_t words = 0;
  const bool sketched = record_ && tavbcopyatt(database_->handle(), record_.get(), TAVD_ATT_SHAPE_DATA,
                                               &words, nullptr, 1) != nullptr;
  const std::wstring missing[] = {
      has_flow_data(product_) ? L" – none, the limits span no axes" : L" – none, there are no flow data",
      product_.flow.nqvL2 > 0 || product_.flow.nparL2 > 0 ? L" – none, the limits span no axes"
                                                          : L" – none, there are no throw data",
      L" – none, there is no shape",
  };
  for (const Drawing drawing : kDrawings) {
    const auto place = static_cast<std::size_t>(drawing);
    const bool there = drawing == Drawing::kShape ? sketched : panes_.is_drawn(drawing);
    set_text(host_, IDC_FIRST_CAPTION + static_cast<int>(place),
             name_of(drawing) + (there || !record_ ? L"" : missing[place]));
  }
}

DrawingSettings Session::settings() const {
  return {point_, flow_unit_, pressure_unit_, fields_.choices()};
}

const Unit& Session::flow_unit() const {
  return product_.flow.isvelocity != 0 ? velocity_unit() : flow_units()[static_cast<std::size_t>(flow_unit_)];
}

const Unit& Session::pressure_unit() const {
  return pressure_units()[static_cast<std::size_t>(pressure_unit_)];
}

}  // namespace viewer
