// The sheet in German.
#include "sheet/texts/texts.h"
#include "tavd/attributes.h"
#include "tavd/tavca.h"

namespace tavdhost {
namespace {

constexpr NumberedText kKinds[] = {
    {TAVD_KIND_RESISTANCE, "fester Widerstand"},
    {TAVD_KIND_RESISTANCE_VELOCITY, "fester Widerstand nach Luftgeschwindigkeit"},
    {TAVD_KIND_RESISTANCE_POINTS, "fester Widerstand, gemessene Kurve"},
    {TAVD_KIND_LIMITS, "Druckbereich"},
    {TAVD_KIND_DAMPER, "einstellbare Drossel"},
    {TAVD_KIND_DAMPER_VELOCITY, "einstellbare Drossel nach Luftgeschwindigkeit"},
    {TAVD_KIND_RANGE, "Gerät für einen Druckbereich"},
    {TAVD_KIND_FAN, "Ventilator"},
};
constexpr NumberedText kRange[] = {
    {TAVCA_OK, "berechnet"},
    {TAVCA_DPTOT_BAD_POINT, "der Bezugspunkt fehlt"},
    {TAVCA_DPTOT_BAD_DAMPER, "die Drosseltabelle fehlt"},
    {TAVCA_DPTOT_OTHER_KIND, "für diese Produktart gibt es kein Druckgesetz"},
};
constexpr NumberedText kDamper[] = {
    {TAVCA_OK, "im Einstellbereich"},
    {TAVCA_POS_ABOVE_TABLE, "stärker gedrosselt als die erste Stellung"},
    {TAVCA_POS_BELOW_TABLE, "weiter geöffnet als die letzte Stellung"},
    {TAVCA_POS_BAD_POINT, "Volumenstrom oder Druck ist zu klein"},
};
constexpr NumberedText kFan[] = {
    {TAVCA_OK, "auf der Ventilatorkennlinie"},
    {TAVCA_FAN_BELOW_CURVE, "Volumenstrom unterhalb der Kennlinie"},
    {TAVCA_FAN_ABOVE_CURVE, "Volumenstrom oberhalb der Kennlinie: kein Druck"},
};
constexpr NumberedText kCheck[] = {
    {TAVCA_OK, "der Ventilator erreicht diesen Punkt"},
    {TAVCA_FAN_BELOW_CURVE, "oberhalb der Geraden durch den ersten Punkt der Kennlinie"},
    {TAVCA_FAN_ABOVE_CURVE, "jenseits des letzten Punktes der Kennlinie"},
    {TAVCA_FAN_OVER_CURVE, "Druck oberhalb der Kennlinie bei diesem Volumenstrom"},
};
constexpr NumberedText kSound[] = {
    {TAVCA_OK, "berechnet"},
    {TAVCA_LW_NO_FLOW, "der Volumenstrom ist zu klein"},
    {TAVCA_LW_FEW_ROWS, "die Schalltabelle ist zu kurz"},
    {TAVCA_LW_OTHER_KIND, "für diese Produktart gibt es keine Schallberechnung"},
    {TAVCA_LW_NO_PRESSURE, "bei diesem Volumenstrom gibt es keinen Druck"},
};

}  // namespace

const SheetTexts kGermanSheet = {
    .language = "de",
    .right_to_left = false,
    .decimal = ',',
    .headings = {.sheet = "Technisches Datenblatt",
                 .schedule = "Produktliste",
                 .duty = "Auslegung",
                 .answers = "Werte im Auslegungspunkt",
                 .bands = "Schallleistung nach Oktavbändern",
                 .flow_chart = "Druck über Volumenstrom",
                 .throw_chart = "Wurfweite über Volumenstrom",
                 .sketch = "Maße",
                 .notes = "Hinweise"},
    .words = {.page = "Seite",
              .code = "Produktcode",
              .id = "Produktkennung",
              .kind = "Art",
              .size = "Größe",
              .database = "Datenbank",
              .unknown = "unbekannt",
              .not_calculated = "nicht berechnet",
              .no_data = "keine Daten"},
    .names = {.flow = "Volumenstrom",
              .velocity = "Luftgeschwindigkeit",
              .pressure = "Gesamtdruck",
              .flow_limits = "Grenzen des Volumenstroms",
              .pressure_limits = "Grenzen des Drucks",
              .parameter = "Parameter {}",
              .room_damping = "Raumdämpfung",
              .end_reflection = "Mündungsreflexion"},
    .answers = {.lowest_pressure = "Kleinster Druck",
                .highest_pressure = "Größter Druck",
                .position = "Stellung, stufenlos",
                .setting = "Stellung, nächste Stufe",
                .pressure_there = "Druck dabei",
                .fan_total = "Ventilator, Gesamtdruck",
                .fan_static = "Ventilator, statischer Druck",
                .fan_dynamic = "Ventilator, dynamischer Druck",
                .fan_point = "Betriebspunkt",
                .throw_length = "Wurfweite",
                .sound_power = "A-bewerteter Schallleistungspegel",
                .room_level = "Schallpegel im Raum",
                .octave_band = "Oktavband",
                .band_power = "Schallleistung",
                .attenuation = "Dämpfung"},
    .notes = {.flow_outside = "Der Volumenstrom liegt außerhalb der Grenzen des Produkts, {}.",
              .pressure_outside = "Der Druck liegt außerhalb der Grenzen des Produkts, {}.",
              .unreachable = "Das Produkt kann bei diesem Volumenstrom diesen Druck nicht haben: {}.",
              .takes = "der Druckverlust beträgt dort {}",
              .levels_elsewhere = "Die Schallpegel gelten für den nächsten erreichbaren Druck.",
              .position_between = "Die Stellung liegt zwischen gemessenen Stellungen und ist interpoliert.",
              .sound_between = "Die Schallpegel sind zwischen gemessenen Punkten interpoliert.",
              .curve_between = "Die Drücke sind zwischen gemessenen Punkten interpoliert.",
              .throw_between = "Die Wurfweite ist zwischen gemessenen Punkten interpoliert.",
              .parameter_between = "{} liegt zwischen den Werten der Tabelle und ist interpoliert.",
              .total_pressure = "Drücke sind Gesamtdrücke.",
              .throw_velocity = "Wurfweite: isotherm, bis zu einer Luftgeschwindigkeit von {}.",
              .millimetres = "Maße in {}."},
    .end_reflection = {.in_table = "nicht abgezogen", .taken_off = "abgezogen", .none = "keine abzuziehen"},
    .schedule = {.room = "Raum",
                 .terminal = "Durchlass",
                 .name = "Name",
                 .line = "Zeile",
                 .product = "Produkt",
                 .available = "Verfügbarer Druck",
                 .takes = "Druck des Produkts",
                 .level = "Raumpegel",
                 .nothing_fits = "kein Produkt passt",
                 .duties = "Auslegungen: {}",
                 .without = "ohne passendes Produkt: {}"},
    .chart = {.curve = "Druckkurve",
              .fan_curve = "Kennlinie",
              .fan_limits = "Ventilatorgrenzen",
              .position = "Stellung",
              .limits = "Grenzen",
              .point = "Auslegung",
              .total_A = "A",
              .any_pressure = "jeder Druck innerhalb der Grenzen"},
    .kinds = kKinds,
    .range_codes = kRange,
    .damper_codes = kDamper,
    .fan_codes = kFan,
    .check_codes = kCheck,
    .sound_codes = kSound,
    .units = {},
};

}  // namespace tavdhost
