// The sheet in Swedish.
#include "sheet/texts/texts.h"
#include "tavd/attributes.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

constexpr NumberedText kKinds[] = {
    {TAVD_KIND_RESISTANCE, "fast motstånd"},
    {TAVD_KIND_RESISTANCE_VELOCITY, "fast motstånd efter lufthastighet"},
    {TAVD_KIND_RESISTANCE_POINTS, "fast motstånd, uppmätt kurva"},
    {TAVD_KIND_LIMITS, "tryckområde"},
    {TAVD_KIND_DAMPER, "inställbart spjäll"},
    {TAVD_KIND_DAMPER_VELOCITY, "inställbart spjäll efter lufthastighet"},
    {TAVD_KIND_RANGE, "don för ett tryckområde"},
    {TAVD_KIND_FAN, "fläkt"},
};
constexpr NumberedText kRange[] = {
    {TAVCA_OK, "beräknat"},
    {TAVCA_DPTOT_BAD_POINT, "referenspunkten saknas"},
    {TAVCA_DPTOT_BAD_DAMPER, "spjälltabellen saknas"},
    {TAVCA_DPTOT_OTHER_KIND, "för denna produkttyp finns ingen trycklag"},
};
constexpr NumberedText kDamper[] = {
    {TAVCA_OK, "inom inställningsområdet"},
    {TAVCA_POS_ABOVE_TABLE, "mer strypt än det första läget"},
    {TAVCA_POS_BELOW_TABLE, "mer öppet än det sista läget"},
    {TAVCA_POS_BAD_POINT, "flödet eller trycket är för litet"},
};
constexpr NumberedText kFan[] = {
    {TAVCA_OK, "på fläktkurvan"},
    {TAVCA_FAN_BELOW_CURVE, "flödet under fläktkurvan"},
    {TAVCA_FAN_ABOVE_CURVE, "flödet över fläktkurvan: inget tryck"},
};
constexpr NumberedText kCheck[] = {
    {TAVCA_OK, "fläkten klarar punkten"},
    {TAVCA_FAN_BELOW_CURVE, "ovanför linjen genom kurvans första punkt"},
    {TAVCA_FAN_ABOVE_CURVE, "bortom kurvans sista punkt"},
    {TAVCA_FAN_OVER_CURVE, "trycket över fläktkurvan vid detta flöde"},
};
constexpr NumberedText kSound[] = {
    {TAVCA_OK, "beräknat"},
    {TAVCA_LW_NO_FLOW, "flödet är för litet"},
    {TAVCA_LW_FEW_ROWS, "ljudtabellen är för kort"},
    {TAVCA_LW_OTHER_KIND, "för denna produkttyp finns ingen ljudberäkning"},
    {TAVCA_LW_NO_PRESSURE, "det finns inget tryck vid detta flöde"},
};

}  // namespace

const SheetTexts kSwedishSheet = {
    .language = "sv",
    .right_to_left = false,
    .decimal = ',',
    .headings = {.sheet = "Produktdatablad",
                 .schedule = "Produktförteckning",
                 .duty = "Dimensionering",
                 .answers = "Värden i dimensioneringspunkten",
                 .bands = "Ljudeffekt per oktavband",
                 .flow_chart = "Tryck över flöde",
                 .throw_chart = "Kastlängd över flöde",
                 .sketch = "Mått",
                 .notes = "Anmärkningar"},
    .words = {.page = "Sida",
              .code = "Produktkod",
              .id = "Produkt-id",
              .kind = "Typ",
              .size = "Storlek",
              .database = "Databas",
              .unknown = "okänt",
              .not_calculated = "ej beräknat",
              .no_data = "inga data"},
    .names = {.flow = "Luftflöde",
              .velocity = "Lufthastighet",
              .pressure = "Totaltryck",
              .flow_limits = "Flödesgränser",
              .pressure_limits = "Tryckgränser",
              .parameter = "Parameter {}",
              .room_damping = "Rumsdämpning",
              .end_reflection = "Ändreflektion"},
    .answers = {.lowest_pressure = "Lägsta tryck",
                .highest_pressure = "Högsta tryck",
                .position = "Läge, steglöst",
                .setting = "Läge, närmaste steg",
                .pressure_there = "Tryck i läget",
                .fan_total = "Fläkt, totaltryck",
                .fan_static = "Fläkt, statiskt tryck",
                .fan_dynamic = "Fläkt, dynamiskt tryck",
                .fan_point = "Driftpunkt",
                .throw_length = "Kastlängd",
                .sound_power = "A-vägd ljudeffektnivå",
                .room_level = "Ljudnivå i rummet",
                .octave_band = "Oktavband",
                .band_power = "Ljudeffekt",
                .attenuation = "Dämpning"},
    .notes = {.flow_outside = "Flödet ligger utanför produktens gränser, {}.",
              .pressure_outside = "Trycket ligger utanför produktens gränser, {}.",
              .unreachable = "Produkten kan inte ha detta tryck vid detta flöde: {}.",
              .takes = "tryckfallet är där {}",
              .levels_elsewhere = "Ljudnivåerna gäller det närmaste tryck som kan nås.",
              .position_between = "Läget ligger mellan uppmätta lägen och är interpolerat.",
              .sound_between = "Ljudnivåerna är interpolerade mellan uppmätta punkter.",
              .curve_between = "Trycken är interpolerade mellan uppmätta punkter.",
              .throw_between = "Kastlängden är interpolerad mellan uppmätta punkter.",
              .parameter_between = "{} ligger mellan tabellens värden och är interpolerad.",
              .total_pressure = "Tryck är totaltryck.",
              .throw_velocity = "Kastlängd: isotermisk, till en lufthastighet av {}.",
              .millimetres = "Mått i {}."},
    .end_reflection = {.in_table = "ej avdragen", .taken_off = "avdragen", .none = "ingen att dra av"},
    .schedule = {.room = "Rum",
                 .terminal = "Don",
                 .name = "Namn",
                 .line = "Rad",
                 .product = "Produkt",
                 .available = "Tillgängligt tryck",
                 .takes = "Produktens tryck",
                 .level = "Rumsnivå",
                 .nothing_fits = "ingen produkt passar",
                 .duties = "Dimensioneringar: {}",
                 .without = "utan produkt som passar: {}"},
    .chart = {.curve = "tryckkurva",
              .fan_curve = "fläktkurva",
              .fan_limits = "fläktens gränser",
              .position = "läge",
              .limits = "gränser",
              .point = "dimensionering",
              .total_A = "A",
              .any_pressure = "valfritt tryck inom gränserna"},
    .kinds = kKinds,
    .range_codes = kRange,
    .damper_codes = kDamper,
    .fan_codes = kFan,
    .check_codes = kCheck,
    .sound_codes = kSound,
    .units = {},
};

}  // namespace tavdhost
