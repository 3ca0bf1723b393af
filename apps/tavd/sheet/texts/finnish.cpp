// The sheet in Finnish.
#include "sheet/texts/texts.h"
#include "tavd/attributes.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

constexpr NumberedText kKinds[] = {
    {TAVD_KIND_RESISTANCE, "kiinteä vastus"},
    {TAVD_KIND_RESISTANCE_VELOCITY, "kiinteä vastus, ilman nopeuden mukaan"},
    {TAVD_KIND_RESISTANCE_POINTS, "kiinteä vastus, mitattu käyrä"},
    {TAVD_KIND_LIMITS, "painealue"},
    {TAVD_KIND_DAMPER, "säädettävä pelti"},
    {TAVD_KIND_DAMPER_VELOCITY, "säädettävä pelti, ilman nopeuden mukaan"},
    {TAVD_KIND_RANGE, "painealueella toimiva laite"},
    {TAVD_KIND_FAN, "puhallin"},
};
constexpr NumberedText kRange[] = {
    {TAVCA_OK, "laskettu"},
    {TAVCA_DPTOT_BAD_POINT, "viitepiste puuttuu"},
    {TAVCA_DPTOT_BAD_DAMPER, "säätötaulukko puuttuu"},
    {TAVCA_DPTOT_OTHER_KIND, "tälle tuotelajille ei ole painelakia"},
};
constexpr NumberedText kDamper[] = {
    {TAVCA_OK, "säätöalueella"},
    {TAVCA_POS_ABOVE_TABLE, "kuristetumpi kuin ensimmäinen asento"},
    {TAVCA_POS_BELOW_TABLE, "avoimempi kuin viimeinen asento"},
    {TAVCA_POS_BAD_POINT, "ilmavirta tai paine on liian pieni"},
};
constexpr NumberedText kFan[] = {
    {TAVCA_OK, "puhallinkäyrällä"},
    {TAVCA_FAN_BELOW_CURVE, "ilmavirta puhallinkäyrän alapuolella"},
    {TAVCA_FAN_ABOVE_CURVE, "ilmavirta puhallinkäyrän yläpuolella: ei painetta"},
};
constexpr NumberedText kCheck[] = {
    {TAVCA_OK, "puhallin toteuttaa pisteen"},
    {TAVCA_FAN_BELOW_CURVE, "käyrän ensimmäisen pisteen kautta kulkevan suoran yläpuolella"},
    {TAVCA_FAN_ABOVE_CURVE, "käyrän viimeisen pisteen ulkopuolella"},
    {TAVCA_FAN_OVER_CURVE, "paine puhallinkäyrän yläpuolella tällä ilmavirralla"},
};
constexpr NumberedText kSound[] = {
    {TAVCA_OK, "laskettu"},
    {TAVCA_LW_NO_FLOW, "ilmavirta on liian pieni"},
    {TAVCA_LW_FEW_ROWS, "äänitaulukko on liian lyhyt"},
    {TAVCA_LW_OTHER_KIND, "tälle tuotelajille ei ole äänilaskentaa"},
    {TAVCA_LW_NO_PRESSURE, "tällä ilmavirralla ei ole painetta"},
};

}  // namespace

const SheetTexts kFinnishSheet = {
    .language = "fi",
    .right_to_left = false,
    .decimal = ',',
    .headings = {.sheet = "Tuotteen tekniset tiedot",
                 .schedule = "Tuoteluettelo",
                 .duty = "Mitoituspiste",
                 .answers = "Tekniset arvot mitoituspisteessä",
                 .bands = "Äänitehotaso oktaavikaistoittain",
                 .flow_chart = "Paine ilmavirran funktiona",
                 .throw_chart = "Heittopituus ilmavirran funktiona",
                 .sketch = "Mitat",
                 .notes = "Huomautukset"},
    .words = {.page = "Sivu",
              .code = "Tuotekoodi",
              .id = "Tuotetunnus",
              .kind = "Laji",
              .size = "Koko",
              .database = "Tietokanta",
              .unknown = "ei tiedossa",
              .not_calculated = "ei laskettu",
              .no_data = "ei tietoja"},
    .names = {.flow = "Ilmavirta",
              .velocity = "Ilman nopeus",
              .pressure = "Kokonaispaine",
              .flow_limits = "Ilmavirran rajat",
              .pressure_limits = "Paineen rajat",
              .parameter = "Parametri {}",
              .room_damping = "Huonevaimennus",
              .end_reflection = "Päätevaimennus"},
    .answers = {.lowest_pressure = "Pienin paine",
                .highest_pressure = "Suurin paine",
                .position = "Asento, portaaton",
                .setting = "Asento, lähin porras",
                .pressure_there = "Paine tässä asennossa",
                .fan_total = "Puhallin, kokonaispaine",
                .fan_static = "Puhallin, staattinen paine",
                .fan_dynamic = "Puhallin, dynaaminen paine",
                .fan_point = "Toimintapiste",
                .throw_length = "Heittopituus",
                .sound_power = "A-painotettu äänitehotaso",
                .room_level = "Äänitaso huoneessa",
                .octave_band = "Oktaavikaista",
                .band_power = "Äänitehotaso",
                .attenuation = "Vaimennus"},
    .notes = {.flow_outside = "Ilmavirta on tuotteen rajojen ulkopuolella, {}.",
              .pressure_outside = "Paine on tuotteen rajojen ulkopuolella, {}.",
              .unreachable = "Tuotteella ei voi olla tätä painetta tällä ilmavirralla: {}.",
              .takes = "painehäviö on silloin {}",
              .levels_elsewhere = "Äänitasot koskevat lähintä saavutettavaa painetta.",
              .position_between = "Asento on mitattujen asentojen välissä ja interpoloitu.",
              .sound_between = "Äänitasot on interpoloitu mitattujen pisteiden väliltä.",
              .curve_between = "Paineet on interpoloitu mitattujen pisteiden väliltä.",
              .throw_between = "Heittopituus on interpoloitu mitattujen pisteiden väliltä.",
              .parameter_between = "{} on taulukon arvojen välissä ja interpoloitu.",
              .total_pressure = "Paineet ovat kokonaispaineita.",
              .throw_velocity = "Heittopituus: isoterminen, ilman nopeuteen {}.",
              .millimetres = "Mitat: {}."},
    .end_reflection = {.in_table = "ei vähennetty", .taken_off = "vähennetty", .none = "ei vähennettävää"},
    .schedule = {.room = "Huone",
                 .terminal = "Päätelaite",
                 .name = "Nimi",
                 .line = "Rivi",
                 .product = "Tuote",
                 .available = "Käytettävä paine",
                 .takes = "Tuotteen paine",
                 .level = "Äänitaso",
                 .nothing_fits = "mikään tuote ei sovi",
                 .duties = "Mitoituspisteitä: {}",
                 .without = "ilman sopivaa tuotetta: {}"},
    .chart = {.curve = "painekäyrä",
              .fan_curve = "puhallinkäyrä",
              .fan_limits = "puhaltimen rajat",
              .position = "asento",
              .limits = "rajat",
              .point = "mitoituspiste",
              .total_A = "A",
              .any_pressure = "mikä tahansa paine rajojen sisällä"},
    .kinds = kKinds,
    .range_codes = kRange,
    .damper_codes = kDamper,
    .fan_codes = kFan,
    .check_codes = kCheck,
    .sound_codes = kSound,
    .units = {},
};

}  // namespace tavdhost
