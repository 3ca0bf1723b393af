/* Which setting does a damper need for 50 l/s at 60 Pa? */
#include <stdio.h>
#include <tavd/tavb.h>
#include <tavd/tavd.h>

int main(int argc, char** argv) {
  FlowData product;
  float position;
  tavdcore_init(0, "", ""); /* language, market area, vlk file: none */
  int16_t db = argc > 3 ? tavdf_open_database(argv[1], 0) : -1;
  tavb_rec record = db < 0 ? NULL : tavbfindrec(db, argv[2], argv[3], 0);
  if (record == NULL || tavca_load_flowdata(db, record, &product) != 0) {
    fprintf(stderr, "usage: first DATABASE CLASS ID, of a product with flow data\n");
    return 1;
  }
  int code = tavca_damper_pos(&product, 50.0f, 60.0f, &position);
  printf("%s: position %.2f (code %d), %.1f to %.1f Pa at 50 l/s\n", product.szobjID, position, code,
         tavca_dptotmin(&product, 50.0f), tavca_dptotmax(&product, 50.0f));
  tavbreleaserec(record);
  return 0;
}
