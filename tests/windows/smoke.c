/* The two DLLs on Windows: a record goes into a new database and comes back, a product of the sample database
 * is calculated, its diagram and its picture are drawn into enhanced metafiles, and its window paints itself.
 * smoke SAMPLE-DATABASE NEW-DATABASE CLASS ID; every line that fails is told, and the result is their number.
 */
#include <stdio.h>
#include <string.h>
#include <tavd/tavb.h>
#include <tavd/tavd.h>
#include <tavd/tavdsrv.h>
#include <windows.h>

static int failed = 0;

static void check(int good, const char* what) {
  printf("%s: %s\n", good ? "ok" : "FAILED", what);
  if (!good) ++failed;
}

struct Counts {
  int lines, texts;
};

static int CALLBACK count(HDC hdc, HANDLETABLE* table, const ENHMETARECORD* record, int objects,
                          LPARAM counts) {
  struct Counts* counted = (struct Counts*)counts;
  (void)hdc, (void)table, (void)objects;
  if (record->iType == EMR_LINETO) ++counted->lines;
  if (record->iType == EMR_EXTTEXTOUTA || record->iType == EMR_EXTTEXTOUTW) ++counted->texts;
  return 1;
}

static struct Counts close_and_count(HDC metafile) {
  struct Counts counts = {0, 0};
  HENHMETAFILE file = CloseEnhMetaFile(metafile);
  EnumEnhMetaFile(NULL, file, count, &counts, NULL);
  DeleteEnhMetaFile(file);
  return counts;
}

static void service(const char* path) {
  const char text[] = "in a DLL";
  char found[20] = "";
  int16_t items = -1;
  int16_t db = tavbopendatabase(NULL, path, 1);
  check(db > 0, "a new database");
  tavb_rec record = tavdsrv_newrec("ASD", "SMOKE-1");
  tavbinsertatt(db, &record, 1525, text, (int16_t)strlen(text));
  tavbsaverec(db, record);
  check(tavdsrv_lasterror()[0] == 0, "a record is saved");
  tavbreleaserec(record);
  tavbfindatt(db, "ASD", "SMOKE-1", 1525, &items, found, sizeof found);
  check(items == 1 && strcmp(found, text) == 0, "and read again");
  check(tavdsrv_closedatabase(db) == 0, "the database is closed");
}

static void drawing(HINSTANCE module, int16_t db, tavb_rec record) {
  check(tavdg_init(module, db, record, 0, 50.0f, 60.0f) == 0, "a flow diagram");
  HDC metafile = CreateEnhMetaFileA(NULL, NULL, NULL, NULL);
  tavdg_create_drawing_tools();
  tavdg_draw_diagram(metafile);
  tavdg_destroy_drawing_tools();
  struct Counts counts = close_and_count(metafile);
  printf("flow diagram: %d lines, %d texts\n", counts.lines, counts.texts);
  check(counts.lines > 20 && counts.texts > 10, "its drawing in GDI");

  tavdshapepic_init(module, db, record, 0);
  metafile = CreateEnhMetaFileA(NULL, NULL, NULL, NULL);
  tavdshapepic_create_drawing_tools();
  tavdshapepic_draw(metafile);
  tavdshapepic_destroy_drawing_tools();
  counts = close_and_count(metafile);
  printf("picture: %d lines, %d texts\n", counts.lines, counts.texts);
  check(counts.lines > 4 && counts.texts > 0, "a picture's drawing in GDI");
}

/* BeginPaint chooses where a window paints, so its procedure cannot be sent to a metafile: its pixels are
 * read. */
static void window(HINSTANCE module) {
  WNDCLASSEXA known;
  memset(&known, 0, sizeof known);
  known.cbSize = sizeof known;
  check(GetClassInfoExA(module, "TAVDDGR", &known) != 0, "the class TAVDDGR");
  printf("the class TAVDSHAPE, whose record says 0x48: %s\n",
         GetClassInfoExA(module, "TAVDSHAPE", &known) ? "taken" : "refused");
  HWND diagram =
      CreateWindowExA(0, "TAVDDGR", "", WS_POPUP | WS_VISIBLE, 0, 0, 400, 300, NULL, NULL, module, NULL);
  if (diagram == NULL) {
    check(0, "a window of the class TAVDDGR");
    return;
  }
  InvalidateRect(diagram, NULL, TRUE);
  check(GetUpdateRect(diagram, NULL, FALSE) != 0, "the window waits to be painted");
  UpdateWindow(diagram);
  check(GetUpdateRect(diagram, NULL, FALSE) == 0, "and has painted itself");
  HDC hdc = GetDC(diagram);
  int dark = 0;
  for (int y = 0; y < 300; ++y) {
    for (int x = 0; x < 400; ++x) dark += GetPixel(hdc, x, y) == RGB(0, 0, 0);
  }
  printf("window: %d black pixels\n", dark);
  check(dark > 500 && dark < 400 * 300 / 2, "its lines and texts are black on white");
  ReleaseDC(diagram, hdc);
  DestroyWindow(diagram);
}

int main(int argc, char** argv) {
  FlowData product;
  float position = -1.0f;
  if (argc != 5) return 99;
  service(argv[2]);
  tavdcore_init(0, "", "");
  int16_t db = tavdf_open_database(argv[1], 0);
  tavb_rec record = tavbfindrec(db, argv[3], argv[4], 0);
  check(record != NULL, "the sample database has the product");
  check(tavca_load_flowdata(db, record, &product) == 0, "it has flow data");
  int code = tavca_damper_pos(&product, 50.0f, 60.0f, &position);
  printf("%s: position %.2f (code %d), %.1f to %.1f Pa at 50 l/s\n", product.szobjID, position, code,
         tavca_dptotmin(&product, 50.0f), tavca_dptotmax(&product, 50.0f));
  drawing(GetModuleHandleA(NULL), db, record);
  window(GetModuleHandleA(NULL));
  tavdshapepic_release();
  tavdg_release();
  tavbreleaserec(record);
  return failed;
}
