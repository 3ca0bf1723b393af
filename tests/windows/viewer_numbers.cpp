#include "viewer_numbers.h"

#include <cstdarg>
#include <cwchar>

#include "tavd/tavb.h"
#include "tavd/tavca.h"
#include "tavd/tavdcore.h"
#include "tavd/tavdf.h"
#include "tavd/tavdsrv.h"

namespace drive {
namespace {

std::wstring line(const wchar_t* format, ...) {
  wchar_t text[300];
  va_list arguments;
  va_start(arguments, format);
  const int length = vswprintf(text, 300, format, arguments);
  va_end(arguments);
  return length > 0 ? text : L"";
}

std::wstring band_line(const wchar_t* label, const float (&levels)[TAVD_BANDS]) {
  std::wstring text = label;
  for (const float level : levels) text += line(L"\t%.1f", static_cast<double>(level));
  return text;
}

void add_damper(std::vector<std::wstring>& lines, const FlowData& flow, const Question& question) {
  float position = 0;
  if (tavca_damper_pos(&flow, question.qv, question.dp, &position) == 0) {
    lines.push_back(line(L"Setting\t%.2f (in range)", static_cast<double>(position)));
  }
  if (tavca_damper_pos_fixed(&flow, question.qv, question.dp, &position) == 0) {
    const float dp = tavca_dptot_damperpos(&flow, question.qv, position);
    lines.push_back(line(L"Nearest fixed setting\t%.2f (%.1f Pa)", static_cast<double>(position),
                         static_cast<double>(dp)));
  }
}

void add_fan(std::vector<std::wstring>& lines, const FlowData& flow, const Question& question) {
  float total = 0;
  float fan_static = 0;
  float dynamic = 0;
  if (tavca_fan_dp(&flow, question.qv, &total, &fan_static, &dynamic) == 0) {
    lines.push_back(line(L"Fan delivers\t%.1f Pa total, %.1f Pa static", static_cast<double>(total),
                         static_cast<double>(fan_static)));
  }
  if (tavca_fan_op_check(&flow, question.qv, question.dp) == 0) {
    lines.emplace_back(L"Fan point\tthe fan can serve this point");
  }
}

std::vector<std::wstring> lines_of(std::int16_t db, tavb_rec record, const Question& question) {
  std::vector<std::wstring> lines;
  FlowData flow;
  DuctSize size{};
  tavca_load_flowdata(db, record, &flow);
  tavca_check_end_reflection(&flow);
  tavdf_load_ductsize(db, record, &size);
  if (question.parameter[0] != 0) tavca_param_setvalue(&flow, question.parameter, question.value);
  float low = 0;
  float high = 0;
  tavca_minmaxdptot(&flow, question.qv, &low, &high);
  lines.push_back(high > low ? line(L"Pressure range\t%.1f – %.1f Pa", static_cast<double>(low),
                                    static_cast<double>(high))
                             : line(L"Pressure drop\t%.1f Pa", static_cast<double>(low)));
  if (flow.kind == 20 || flow.kind == 22) add_damper(lines, flow, question);
  if (flow.kind == 40) add_fan(lines, flow, question);
  const float length = tavca_L2_isothermal(&flow, question.qv, question.value);
  if (length > 0) lines.push_back(line(L"Throw length\t%.2f m", static_cast<double>(length)));
  float lw[TAVD_BANDS] = {};
  if (flow.nlw > 0 && tavca_lw(&flow, question.qv, question.dp, lw, &size) == 0) {
    lines.push_back(line(L"Sound level in the room\t%.1f dB(A)", static_cast<double>(tavca_LpA(lw))));
    lines.push_back(band_line(L"Sound power, dB", lw));
  }
  return lines;
}

}  // namespace

std::vector<std::wstring> expected_lines(const std::wstring& database, const Question& question) {
  tavdcore_initw(0, "", L"");
  const std::int16_t db = tavdf_open_databasew(database.c_str(), 0);
  if (db < 0) return {};
  tavb_rec record = tavbfindrec(db, question.class_id, question.object_id, 0);
  std::vector<std::wstring> lines;
  if (record != nullptr) lines = lines_of(db, record, question);
  tavbreleaserec(record);
  tavdsrv_closedatabase(db);
  return lines;
}

}  // namespace drive
