// Puts the spy between tavd.dll and tavdsrv.dll: a DLL calls what its own import table names, so that the
// spy's functions, which bear the same names, are entered there before the first test.
#include "support/next_service.h"

#include "imports.h"
#include "tavd/tavb.h"

namespace tavdtest {

namespace {

constexpr const char* kService = "tavdsrv.dll";

struct Import {
  const char* name;
  void* spy;
};

template <typename Function>
Import import_of(const char* name, Function* spy) {
  return {name, reinterpret_cast<void*>(spy)};
}

const bool between = [] {
  const HMODULE library = GetModuleHandleA("tavd.dll");
  const Import imports[] = {import_of("tavbopendatabase", &tavbopendatabase),
                            import_of("tavbopendatabasew", &tavbopendatabasew),
                            import_of("tavbfindrec", &tavbfindrec),
                            import_of("tavbnextrec", &tavbnextrec),
                            import_of("tavbreleaserec", &tavbreleaserec),
                            import_of("tavbgetID", &tavbgetID),
                            import_of("tavbcopyatt", &tavbcopyatt),
                            import_of("tavbcopywsz", &tavbcopywsz),
                            import_of("tavbfindatt", &tavbfindatt),
                            import_of("tavbreleaseatt", &tavbreleaseatt),
                            import_of("tavbinsertatt", &tavbinsertatt),
                            import_of("tavbsaverec", &tavbsaverec),
                            import_of("tavbdeleterec", &tavbdeleterec),
                            import_of("tavbgetahm", &tavbgetahm),
                            import_of("tavbsaverecwithahm", &tavbsaverecwithahm),
                            import_of("tavbreleaseahm", &tavbreleaseahm)};
  bool all = true;
  for (const Import& import : imports) {
    all = redirect_import(library, import.name, import.spy) != nullptr && all;
  }
  return all;
}();

}  // namespace

void* next_service(const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(kService), name));
}

}  // namespace tavdtest
