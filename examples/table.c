/* A table of a damper: positions, pressures and sound over flow, all points in one call. */
#include <stdio.h>
#include <tavd/tavb.h>
#include <tavd/tavd.h>
#include <tavd/tavdn.h>

enum { POINTS = 6 };

static int print_table(const tavdn_product* product, float first, float step, float dp) {
  const float room_damping = 4.0f; /* dB */
  float qv[POINTS], dps[POINTS], position[POINTS], lpa[POINTS], lowest[POINTS];
  int32_t position_code[POINTS], lw_code[POINTS];
  tavdn_results results = {.size = sizeof results,
                           .dp_min = lowest,
                           .position_code = position_code,
                           .position = position,
                           .lw_code = lw_code,
                           .lpa = lpa};
  for (int i = 0; i < POINTS; i++) {
    qv[i] = first + (float)i * step;
    dps[i] = dp;
  }
  const int code = tavdn_calculate(product, POINTS, qv, dps, room_damping, &results);
  if (code != TAVDN_OK) {
    fprintf(stderr, "table: %s\n", tavdn_message("tavdn_calculate", code));
    return 1;
  }
  printf("%s at %.0f Pa\n l/s  open, Pa  position  dB(A)\n", tavdn_flowdata(product)->szobjID, dp);
  for (int i = 0; i < POINTS; i++) {
    printf("%4.0f  %8.1f  %8.2f  ", qv[i], lowest[i], position[i]);
    if (lw_code[i] == TAVCA_OK) {
      printf("%5.1f", lpa[i]);
    } else {
      printf("%s", tavdn_message("tavca_lw", lw_code[i]));
    }
    printf("  %s\n", tavdn_message("tavca_damper_pos", position_code[i]));
  }
  return 0;
}

int main(int argc, char** argv) {
  FlowData flow;
  DuctSize duct;
  tavdn_product* product = NULL;
  tavdcore_init(0, "", ""); /* language, market area, vlk file: none */
  int16_t db = argc > 3 ? tavdf_open_database(argv[1], 0) : -1;
  tavb_rec record = db < 0 ? NULL : tavbfindrec(db, argv[2], argv[3], 0);
  if (record == NULL || tavca_load_flowdata(db, record, &flow) != TAVCA_OK) {
    fprintf(stderr, "usage: table DATABASE CLASS ID, of a product with flow data\n");
    return 1;
  }
  tavca_check_end_reflection(&flow);
  tavdf_load_ductsize(db, record, &duct);
  tavbreleaserec(record);
  if (tavdn_prepare(&flow, &duct, &product) != TAVDN_OK) return 1;
  const int failed = print_table(product, 40.0f, 20.0f, 70.0f);
  tavdn_release(product);
  return failed;
}
