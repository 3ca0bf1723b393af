/* The three quietest dampers for 80 l/s at 70 Pa, out of a whole database, and why not each of the others. */
#include <stdio.h>
#include <stdlib.h>
#include <tavd/tavd.h>
#include <tavd/tavdn_select.h>

enum { WANTED = 3 };

static void print_hits(const tavdn_catalogue* catalogue, const tavdn_hit* hits, int32_t n) {
  for (int32_t i = 0; i < n; i++) {
    const tavdn_listed* product = tavdn_catalogue_product(catalogue, hits[i].product);
    printf("%s %s: position %.2f, %.1f dB(A)\n", product->class_id, product->object_id, hits[i].position,
           hits[i].lpa);
  }
}

static void print_reasons(const tavdn_catalogue* catalogue, const unsigned char* reasons) {
  for (size_t i = 0; i < tavdn_catalogue_count(catalogue); i++) {
    if (reasons[i] == TAVDN_WHY_FITS) continue;
    printf("%s: %s\n", tavdn_catalogue_product(catalogue, i)->object_id,
           tavdn_message("TAVDN_WHY_", reasons[i]));
  }
}

static int print_selection(const tavdn_catalogue* catalogue) {
  const tavdn_duty duty = {.size = sizeof duty,
                           .qv = 80.0,             /* l/s */
                           .dp = 70.0f,            /* Pa */
                           .lp_max = 30.0f,        /* dB(A) */
                           .roomdamp = 15.0f,      /* dB: silencer, ceiling and room */
                           .duct_min = {.b = 100}, /* mm */
                           .duct_max = {.b = 250},
                           .rank = TAVDN_RANK_SOUND,
                           .wanted = WANTED};
  tavdn_hit hits[WANTED];
  tavdn_fitting fitting;
  unsigned char* reasons = malloc(tavdn_catalogue_count(catalogue) + 1);
  if (reasons == NULL) return 1;
  const int code = tavdn_select(catalogue, &duty, WANTED, hits, &fitting, reasons);
  if (code == TAVDN_OK) {
    printf("%d of %d fit\n", (int)fitting.products, (int)tavdn_catalogue_count(catalogue));
    print_hits(catalogue, hits, fitting.hits);
    print_reasons(catalogue, reasons);
  } else {
    fprintf(stderr, "select: %s\n", tavdn_message("tavdn_select", code));
  }
  free(reasons);
  return code == TAVDN_OK ? 0 : 1;
}

int main(int argc, char** argv) {
  const char* const classes[] = {"DMP"};
  const tavdn_catalogue_options options = {.size = sizeof options, .classes = classes, .nclasses = 1};
  tavdn_catalogue* catalogue = NULL;
  tavdcore_init(0, "", ""); /* language, market area, vlk file: none */
  const int16_t db = argc > 1 ? tavdf_open_database(argv[1], 0) : -1;
  if (db < 0 || tavdn_catalogue_open(db, &options, &catalogue) != TAVDN_OK) {
    fprintf(stderr, "usage: select DATABASE\n");
    return 1;
  }
  const int failed = print_selection(catalogue);
  tavdn_catalogue_close(catalogue);
  return failed;
}
