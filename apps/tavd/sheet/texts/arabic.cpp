// The sheet in Arabic.
#include "sheet/texts/texts.h"
#include "tavd/attributes.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

constexpr NumberedText kKinds[] = {
    {TAVD_KIND_RESISTANCE, "مقاومة ثابتة"},
    {TAVD_KIND_RESISTANCE_VELOCITY, "مقاومة ثابتة حسب سرعة الهواء"},
    {TAVD_KIND_RESISTANCE_POINTS, "مقاومة ثابتة بمنحنى مقيس"},
    {TAVD_KIND_LIMITS, "نطاق ضغط"},
    {TAVD_KIND_DAMPER, "مخمد قابل للضبط"},
    {TAVD_KIND_DAMPER_VELOCITY, "مخمد قابل للضبط حسب سرعة الهواء"},
    {TAVD_KIND_RANGE, "جهاز لنطاق ضغط"},
    {TAVD_KIND_FAN, "مروحة"},
};
constexpr NumberedText kRange[] = {
    {TAVCA_OK, "محسوب"},
    {TAVCA_DPTOT_BAD_POINT, "نقطة المرجع مفقودة"},
    {TAVCA_DPTOT_BAD_DAMPER, "جدول المخمد مفقود"},
    {TAVCA_DPTOT_OTHER_KIND, "لا يوجد قانون ضغط لهذا النوع"},
};
constexpr NumberedText kDamper[] = {
    {TAVCA_OK, "ضمن نطاق الضبط"},
    {TAVCA_POS_ABOVE_TABLE, "أكثر إغلاقا من الوضع الأول"},
    {TAVCA_POS_BELOW_TABLE, "أكثر فتحا من الوضع الأخير"},
    {TAVCA_POS_BAD_POINT, "التدفق أو الضغط صغير جدا"},
};
constexpr NumberedText kFan[] = {
    {TAVCA_OK, "على منحنى المروحة"},
    {TAVCA_FAN_BELOW_CURVE, "التدفق دون منحنى المروحة"},
    {TAVCA_FAN_ABOVE_CURVE, "التدفق فوق منحنى المروحة: لا ضغط"},
};
constexpr NumberedText kCheck[] = {
    {TAVCA_OK, "تحقق المروحة هذه النقطة"},
    {TAVCA_FAN_BELOW_CURVE, "فوق الخط المار بأول نقطة في المنحنى"},
    {TAVCA_FAN_ABOVE_CURVE, "بعد آخر نقطة في المنحنى"},
    {TAVCA_FAN_OVER_CURVE, "الضغط فوق منحنى المروحة عند هذا التدفق"},
};
constexpr NumberedText kSound[] = {
    {TAVCA_OK, "محسوب"},
    {TAVCA_LW_NO_FLOW, "التدفق صغير جدا"},
    {TAVCA_LW_FEW_ROWS, "جدول الصوت قصير جدا"},
    {TAVCA_LW_OTHER_KIND, "لا يوجد حساب صوت لهذا النوع"},
    {TAVCA_LW_NO_PRESSURE, "لا يوجد ضغط عند هذا التدفق"},
};

}  // namespace

const SheetTexts kArabicSheet = {
    .language = "ar",
    .right_to_left = true,
    .decimal = '.',
    .headings = {.sheet = "صحيفة بيانات المنتج",
                 .schedule = "جدول المنتجات",
                 .duty = "نقطة التصميم",
                 .answers = "الأداء عند نقطة التصميم",
                 .bands = "القدرة الصوتية لكل نطاق أوكتاف",
                 .flow_chart = "الضغط مقابل التدفق",
                 .throw_chart = "مدى القذف مقابل التدفق",
                 .sketch = "الأبعاد",
                 .notes = "ملاحظات"},
    .words = {.page = "صفحة",
              .code = "رمز المنتج",
              .id = "معرف المنتج",
              .kind = "النوع",
              .size = "المقاس",
              .database = "قاعدة البيانات",
              .unknown = "غير معروف",
              .not_calculated = "غير محسوب",
              .no_data = "لا بيانات"},
    .names = {.flow = "تدفق الهواء",
              .velocity = "سرعة الهواء",
              .pressure = "الضغط الكلي",
              .flow_limits = "حدود التدفق",
              .pressure_limits = "حدود الضغط",
              .parameter = "المعامل {}",
              .room_damping = "توهين الغرفة",
              .end_reflection = "انعكاس الطرف"},
    .answers = {.lowest_pressure = "أدنى ضغط",
                .highest_pressure = "أعلى ضغط",
                .position = "الوضع بلا تدريج",
                .setting = "أقرب وضع مدرج",
                .pressure_there = "الضغط عنده",
                .fan_total = "المروحة: الضغط الكلي",
                .fan_static = "المروحة: الضغط الساكن",
                .fan_dynamic = "المروحة: الضغط الديناميكي",
                .fan_point = "نقطة التشغيل",
                .throw_length = "مدى القذف",
                .sound_power = "مستوى القدرة الصوتية الموزون A",
                .room_level = "مستوى الصوت في الغرفة",
                .octave_band = "نطاق الأوكتاف",
                .band_power = "القدرة الصوتية",
                .attenuation = "التوهين"},
    .notes = {.flow_outside = "التدفق خارج حدود المنتج، {}.",
              .pressure_outside = "الضغط خارج حدود المنتج، {}.",
              .unreachable = "لا يمكن للمنتج بلوغ هذا الضغط عند هذا التدفق: {}.",
              .takes = "فقد الضغط عنده {}",
              .levels_elsewhere = "مستويات الصوت هي لأقرب ضغط يمكن بلوغه.",
              .position_between = "يقع الوضع بين الأوضاع المقيسة وهو محسوب بالاستيفاء.",
              .sound_between = "مستويات الصوت محسوبة بالاستيفاء بين النقاط المقيسة.",
              .curve_between = "الضغوط محسوبة بالاستيفاء بين النقاط المقيسة.",
              .throw_between = "مدى القذف محسوب بالاستيفاء بين النقاط المقيسة.",
              .parameter_between = "المعامل {} يقع بين قيم جدوله وهو محسوب بالاستيفاء.",
              .total_pressure = "الضغوط هي ضغوط كلية.",
              .throw_velocity = "مدى القذف: متساوي الحرارة، حتى سرعة هواء {}.",
              .millimetres = "الأبعاد بوحدة {}."},
    .end_reflection = {.in_table = "غير مطروح", .taken_off = "مطروح", .none = "لا شيء يطرح"},
    .schedule = {.room = "الغرفة",
                 .terminal = "الموزع",
                 .name = "الاسم",
                 .line = "السطر",
                 .product = "المنتج",
                 .available = "الضغط المتاح",
                 .takes = "ضغط المنتج",
                 .level = "مستوى الغرفة",
                 .nothing_fits = "لا منتج مناسب",
                 .duties = "عدد النقاط: {}",
                 .without = "بلا منتج مناسب: {}"},
    .chart = {.curve = "منحنى الضغط",
              .fan_curve = "منحنى المروحة",
              .fan_limits = "حدود المروحة",
              .position = "الوضع",
              .limits = "الحدود",
              .point = "نقطة التصميم",
              .total_A = "A",
              .any_pressure = "أي ضغط ضمن الحدود"},
    .kinds = kKinds,
    .range_codes = kRange,
    .damper_codes = kDamper,
    .fan_codes = kFan,
    .check_codes = kCheck,
    .sound_codes = kSound,
    .units = {},
};

}  // namespace tavdhost
