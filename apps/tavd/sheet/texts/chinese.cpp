// The sheet in Chinese.
#include "sheet/texts/texts.h"
#include "tavd/attributes.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

constexpr NumberedText kKinds[] = {
    {TAVD_KIND_RESISTANCE, "固定阻力"},
    {TAVD_KIND_RESISTANCE_VELOCITY, "固定阻力（按风速）"},
    {TAVD_KIND_RESISTANCE_POINTS, "固定阻力（实测曲线）"},
    {TAVD_KIND_LIMITS, "压力范围"},
    {TAVD_KIND_DAMPER, "可调风阀"},
    {TAVD_KIND_DAMPER_VELOCITY, "可调风阀（按风速）"},
    {TAVD_KIND_RANGE, "压力范围内工作的设备"},
    {TAVD_KIND_FAN, "风机"},
};
constexpr NumberedText kRange[] = {
    {TAVCA_OK, "已计算"},
    {TAVCA_DPTOT_BAD_POINT, "缺少参考点"},
    {TAVCA_DPTOT_BAD_DAMPER, "缺少风阀数据表"},
    {TAVCA_DPTOT_OTHER_KIND, "此类产品没有压力计算式"},
};
constexpr NumberedText kDamper[] = {
    {TAVCA_OK, "在调节范围内"},
    {TAVCA_POS_ABOVE_TABLE, "比第一档更关小"},
    {TAVCA_POS_BELOW_TABLE, "比最后一档更开大"},
    {TAVCA_POS_BAD_POINT, "风量或压力过小"},
};
constexpr NumberedText kFan[] = {
    {TAVCA_OK, "在风机曲线上"},
    {TAVCA_FAN_BELOW_CURVE, "风量低于风机曲线"},
    {TAVCA_FAN_ABOVE_CURVE, "风量高于风机曲线：无压力"},
};
constexpr NumberedText kCheck[] = {
    {TAVCA_OK, "风机可满足此工况"},
    {TAVCA_FAN_BELOW_CURVE, "高于曲线首点的连线"},
    {TAVCA_FAN_ABOVE_CURVE, "超出曲线末点"},
    {TAVCA_FAN_OVER_CURVE, "此风量下压力高于风机曲线"},
};
constexpr NumberedText kSound[] = {
    {TAVCA_OK, "已计算"},
    {TAVCA_LW_NO_FLOW, "风量过小"},
    {TAVCA_LW_FEW_ROWS, "噪声数据表过短"},
    {TAVCA_LW_OTHER_KIND, "此类产品没有噪声计算"},
    {TAVCA_LW_NO_PRESSURE, "此风量下没有压力"},
};

}  // namespace

const SheetTexts kChineseSheet = {
    .language = "zh-Hans",
    .right_to_left = false,
    .decimal = '.',
    .headings = {.sheet = "产品技术数据表",
                 .schedule = "产品清单",
                 .duty = "设计工况",
                 .answers = "设计工况下的性能",
                 .bands = "各倍频带声功率级",
                 .flow_chart = "压力—风量曲线",
                 .throw_chart = "射程—风量曲线",
                 .sketch = "尺寸",
                 .notes = "备注"},
    .words = {.page = "页",
              .code = "产品代码",
              .id = "产品编号",
              .kind = "类型",
              .size = "规格",
              .database = "数据库",
              .unknown = "未知",
              .not_calculated = "未计算",
              .no_data = "无数据"},
    .names = {.flow = "风量",
              .velocity = "风速",
              .pressure = "全压",
              .flow_limits = "风量范围",
              .pressure_limits = "压力范围",
              .parameter = "参数 {}",
              .room_damping = "房间衰减",
              .end_reflection = "末端反射"},
    .answers = {.lowest_pressure = "最低压力",
                .highest_pressure = "最高压力",
                .position = "阀位（无级）",
                .setting = "阀位（最近档位）",
                .pressure_there = "该阀位压力",
                .fan_total = "风机全压",
                .fan_static = "风机静压",
                .fan_dynamic = "风机动压",
                .fan_point = "工况点",
                .throw_length = "射程",
                .sound_power = "A 计权声功率级",
                .room_level = "室内声级",
                .octave_band = "倍频带",
                .band_power = "声功率级",
                .attenuation = "消声量"},
    .notes = {.flow_outside = "风量超出产品范围 {}。",
              .pressure_outside = "压力超出产品范围 {}。",
              .unreachable = "此风量下产品达不到该压力：{}。",
              .takes = "此时压力损失为 {}",
              .levels_elsewhere = "声级为最接近的可达压力下的数值。",
              .position_between = "阀位介于实测档位之间，为插值结果。",
              .sound_between = "声级由实测点插值得出。",
              .curve_between = "压力由实测点插值得出。",
              .throw_between = "射程由实测点插值得出。",
              .parameter_between = "{} 介于表中数值之间，为插值结果。",
              .total_pressure = "压力均为全压。",
              .throw_velocity = "射程：等温，末端风速 {}。",
              .millimetres = "尺寸单位为 {}。"},
    .end_reflection = {.in_table = "未扣除", .taken_off = "已扣除", .none = "无需扣除"},
    .schedule = {.room = "房间",
                 .terminal = "风口",
                 .name = "名称",
                 .line = "行",
                 .product = "产品",
                 .available = "可用压力",
                 .takes = "产品压力",
                 .level = "室内声级",
                 .nothing_fits = "没有合适的产品",
                 .duties = "工况数：{}",
                 .without = "没有合适产品的工况：{}"},
    .chart = {.curve = "压力曲线",
              .fan_curve = "风机曲线",
              .fan_limits = "风机工作范围",
              .position = "阀位",
              .limits = "范围",
              .point = "设计工况",
              .total_A = "A",
              .any_pressure = "范围内任意压力"},
    .kinds = kKinds,
    .range_codes = kRange,
    .damper_codes = kDamper,
    .fan_codes = kFan,
    .check_codes = kCheck,
    .sound_codes = kSound,
    .units = {},
};

}  // namespace tavdhost
