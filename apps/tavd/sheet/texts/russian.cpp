// The sheet in Russian.
#include "sheet/texts/texts.h"
#include "tavd/attributes.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

constexpr NumberedText kKinds[] = {
    {TAVD_KIND_RESISTANCE, "постоянное сопротивление"},
    {TAVD_KIND_RESISTANCE_VELOCITY, "сопротивление по скорости воздуха"},
    {TAVD_KIND_RESISTANCE_POINTS, "сопротивление по измеренной кривой"},
    {TAVD_KIND_LIMITS, "диапазон давления"},
    {TAVD_KIND_DAMPER, "регулируемый клапан"},
    {TAVD_KIND_DAMPER_VELOCITY, "регулируемый клапан по скорости воздуха"},
    {TAVD_KIND_RANGE, "устройство для диапазона давления"},
    {TAVD_KIND_FAN, "вентилятор"},
};
constexpr NumberedText kRange[] = {
    {TAVCA_OK, "рассчитано"},
    {TAVCA_DPTOT_BAD_POINT, "нет опорной точки"},
    {TAVCA_DPTOT_BAD_DAMPER, "нет таблицы положений клапана"},
    {TAVCA_DPTOT_OTHER_KIND, "для этого вида изделий нет закона давления"},
};
constexpr NumberedText kDamper[] = {
    {TAVCA_OK, "в пределах настройки"},
    {TAVCA_POS_ABOVE_TABLE, "закрыт больше, чем в первом положении"},
    {TAVCA_POS_BELOW_TABLE, "открыт больше, чем в последнем положении"},
    {TAVCA_POS_BAD_POINT, "расход или давление слишком малы"},
};
constexpr NumberedText kFan[] = {
    {TAVCA_OK, "на характеристике вентилятора"},
    {TAVCA_FAN_BELOW_CURVE, "расход ниже характеристики вентилятора"},
    {TAVCA_FAN_ABOVE_CURVE, "расход выше характеристики: давления нет"},
};
constexpr NumberedText kCheck[] = {
    {TAVCA_OK, "вентилятор обеспечивает эту точку"},
    {TAVCA_FAN_BELOW_CURVE, "выше прямой через первую точку характеристики"},
    {TAVCA_FAN_ABOVE_CURVE, "за последней точкой характеристики"},
    {TAVCA_FAN_OVER_CURVE, "давление выше характеристики при этом расходе"},
};
constexpr NumberedText kSound[] = {
    {TAVCA_OK, "рассчитано"},
    {TAVCA_LW_NO_FLOW, "расход слишком мал"},
    {TAVCA_LW_FEW_ROWS, "таблица шума слишком короткая"},
    {TAVCA_LW_OTHER_KIND, "для этого вида изделий нет расчёта шума"},
    {TAVCA_LW_NO_PRESSURE, "при этом расходе нет давления"},
};
constexpr UnitSign kUnits[] = {
    {"l/s", "л/с"}, {"l/h", "л/ч"}, {"m3/s", "м³/с"},   {"m3/h", "м³/ч"}, {"m/s", "м/с"}, {"Pa", "Па"},
    {"kPa", "кПа"}, {"dB", "дБ"},   {"dB(A)", "дБ(А)"}, {"Hz", "Гц"},     {"mm", "мм"},   {"m", "м"},
};

}  // namespace

const SheetTexts kRussianSheet = {
    .language = "ru",
    .right_to_left = false,
    .decimal = ',',
    .headings = {.sheet = "Технический паспорт изделия",
                 .schedule = "Ведомость изделий",
                 .duty = "Расчётный режим",
                 .answers = "Показатели в расчётном режиме",
                 .bands = "Звуковая мощность по октавным полосам",
                 .flow_chart = "Давление в зависимости от расхода",
                 .throw_chart = "Дальнобойность в зависимости от расхода",
                 .sketch = "Размеры",
                 .notes = "Примечания"},
    .words = {.page = "Страница",
              .code = "Код изделия",
              .id = "Обозначение",
              .kind = "Вид",
              .size = "Размер",
              .database = "База данных",
              .unknown = "неизвестно",
              .not_calculated = "не рассчитано",
              .no_data = "нет данных"},
    .names = {.flow = "Расход воздуха",
              .velocity = "Скорость воздуха",
              .pressure = "Полное давление",
              .flow_limits = "Пределы расхода",
              .pressure_limits = "Пределы давления",
              .parameter = "Параметр {}",
              .room_damping = "Поглощение помещения",
              .end_reflection = "Концевое отражение"},
    .answers = {.lowest_pressure = "Наименьшее давление",
                .highest_pressure = "Наибольшее давление",
                .position = "Положение, плавно",
                .setting = "Положение, ближайшая ступень",
                .pressure_there = "Давление в нём",
                .fan_total = "Вентилятор, полное давление",
                .fan_static = "Вентилятор, статическое давление",
                .fan_dynamic = "Вентилятор, динамическое давление",
                .fan_point = "Рабочая точка",
                .throw_length = "Дальнобойность",
                .sound_power = "Уровень звуковой мощности по А",
                .room_level = "Уровень звука в помещении",
                .octave_band = "Октавная полоса",
                .band_power = "Звуковая мощность",
                .attenuation = "Затухание"},
    .notes = {.flow_outside = "Расход вне пределов изделия, {}.",
              .pressure_outside = "Давление вне пределов изделия, {}.",
              .unreachable = "При этом расходе у изделия не может быть такого давления: {}.",
              .takes = "потеря давления там {}",
              .levels_elsewhere = "Уровни шума относятся к ближайшему достижимому давлению.",
              .position_between = "Положение лежит между измеренными и интерполировано.",
              .sound_between = "Уровни шума интерполированы между измеренными точками.",
              .curve_between = "Давления интерполированы между измеренными точками.",
              .throw_between = "Дальнобойность интерполирована между измеренными точками.",
              .parameter_between = "Параметр {} лежит между значениями таблицы и интерполирован.",
              .total_pressure = "Давления — полные.",
              .throw_velocity = "Дальнобойность: изотермическая, до скорости воздуха {}.",
              .millimetres = "Размеры в {}."},
    .end_reflection = {.in_table = "не вычтено", .taken_off = "вычтено", .none = "вычитать нечего"},
    .schedule = {.room = "Помещение",
                 .terminal = "Воздухораспределитель",
                 .name = "Название",
                 .line = "Строка",
                 .product = "Изделие",
                 .available = "Доступное давление",
                 .takes = "Давление изделия",
                 .level = "Уровень звука",
                 .nothing_fits = "нет подходящего изделия",
                 .duties = "Режимов: {}",
                 .without = "без подходящего изделия: {}"},
    .chart = {.curve = "кривая давления",
              .fan_curve = "характеристика",
              .fan_limits = "пределы вентилятора",
              .position = "положение",
              .limits = "пределы",
              .point = "режим",
              .total_A = "A",
              .any_pressure = "любое давление в пределах"},
    .kinds = kKinds,
    .range_codes = kRange,
    .damper_codes = kDamper,
    .fan_codes = kFan,
    .check_codes = kCheck,
    .sound_codes = kSound,
    .units = kUnits,
};

}  // namespace tavdhost
