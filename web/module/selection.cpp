// Questions about what fits a duty.
#include "base/errors.h"
#include "questions.h"
#include "select/hits.h"

namespace tavdweb {
namespace {

using tavdhost::Request;

// What a duty may say, under the names of the command line's options.
struct Member {
  const char* name;
  tavdhost::Take take;
};
constexpr Member kMembers[] = {
    {"qv", tavdhost::take_flow},
    {"dp", tavdhost::take_pressure},
    {"max_lp", tavdhost::take_level},
    {"room_damping", tavdhost::take_damping},
    {"max_lw", tavdhost::take_bands},
    {"throw", tavdhost::take_throw},
    {"size", tavdhost::take_size},
    {"class", tavdhost::take_classes},
    {"rank", tavdhost::take_rank},
    {"top", tavdhost::take_hits},
    {"allow_unknown", tavdhost::take_unknown},
};

// A duty that has been asked, with what it was asked of.
struct Asked {
  tavdhost::SelectCatalogue& catalogue;
  std::vector<Request> requests;  // one, that stays where its texts are
  tavdhost::Selected selected;

  const Request& request() const { return requests.front(); }
};

Request request_of(const Json::Value& question) {
  Request request;
  for (const Member& member : kMembers) {
    if (const std::string given = text(question, member.name); !given.empty()) {
      member.take(member.name, given, request);
    }
  }
  for (const std::string& choice : texts(question, "parameters")) {
    tavdhost::take_parameter("parameter", choice, request);
  }
  if (!request.has_flow) throw tavdhost::UserError("a flow is needed");
  if (!request.has_pressure) throw tavdhost::UserError("a pressure is needed");
  return request;
}

Asked ask(Session& session, const Json::Value& question) {
  std::vector<Request> requests = {request_of(question)};
  const std::vector<std::string>& classes = requests.front().classes;
  Asked asked{session.catalogue(classes, flag(question, "end_reflection")), std::move(requests), {}};
  asked.catalogue.complete(asked.requests);
  asked.catalogue.check_classes(asked.request());
  asked.selected = tavdhost::select_one(asked.catalogue.get(), asked.request().duty, true);
  return asked;
}

}  // namespace

Json::Value select(Session& session, const Json::Value& question) {
  const Asked asked = ask(session, question);
  Json::Value json =
      tavdhost::hits_json(asked.catalogue, asked.request(), asked.selected, true, shown_units(question));
  json["fitting_text"] = hosts::fitting_text(asked.selected.products, asked.catalogue.count());
  json["nearest"] = asked.selected.hits.empty() ? tavdhost::nearest_reason(asked.selected.reasons) : "";
  return json;
}

Json::Value select_as_csv(Session& session, const Json::Value& question) {
  const Asked asked = ask(session, question);
  const tavdhost::HitLines lines(shown_units(question));
  std::string csv;
  lines.heading({}, csv);
  const std::string why_not =
      asked.selected.hits.empty() ? tavdhost::nearest_reason(asked.selected.reasons) : "";
  lines.add({}, asked.catalogue.get(), asked.request().duty, asked.selected, why_not, csv);
  Json::Value json;
  json["csv"] = csv;
  return json;
}

}  // namespace tavdweb
