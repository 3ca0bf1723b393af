#include "service/postgresql/tables.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "service/lasterror.h"

namespace tavdsrv::postgresql {

namespace {

// Why a schema with tables other than ours is no product database.
constexpr const char* kOtherTables = "its tables are not those of a product database";

// The layout stands in the schema's comment: whoever looks into the database reads what it is.
constexpr std::string_view kComment = "product database, layout ";
constexpr std::string_view kLayout = "1";

// A key and a body are bounded by the server itself. Values that are long are kept out of the row by the
// server, and compressed.
constexpr const char* kMake =
    "CREATE SCHEMA tavd;"
    "CREATE TABLE tavd.record(key bytea PRIMARY KEY CHECK (octet_length(key) = 33),"
    " body bytea NOT NULL CHECK (octet_length(body) <= 67108864));"
    "CREATE TABLE tavd.ahm(key bytea PRIMARY KEY CHECK (octet_length(key) = 33),"
    " block bytea NOT NULL CHECK (octet_length(block) <= 67108864));"
    "COMMENT ON SCHEMA tavd IS 'product database, layout 1'";

// What the schema holds, a line each: more than that could compute what is read, or run somebody's code with
// the rights of whoever saves. `other` stands behind a table with triggers, rules, policies or heirs, and
// behind a column with a value of its own.
constexpr const char* kDeclarations =
    "SELECT * FROM ("
    "SELECT 'table ' || c.relname || ' ' || c.relkind::text || c.relpersistence::text || "
    " CASE WHEN c.relrowsecurity OR c.relispartition OR c.reloftype <> 0"
    "  OR EXISTS (SELECT FROM pg_trigger t WHERE t.tgrelid = c.oid)"
    "  OR EXISTS (SELECT FROM pg_rewrite r WHERE r.ev_class = c.oid)"
    "  OR EXISTS (SELECT FROM pg_policy p WHERE p.polrelid = c.oid)"
    "  OR EXISTS (SELECT FROM pg_inherits i WHERE c.oid IN (i.inhrelid, i.inhparent) AND c.relkind <> 'i')"
    " THEN ' other' ELSE '' END AS line"
    " FROM pg_class c WHERE c.relnamespace = to_regnamespace('tavd') AND c.relkind <> 'i' "
    "UNION ALL "
    "SELECT 'column ' || c.relname || ' ' || a.attname || ' ' || format_type(a.atttypid, a.atttypmod) || "
    " CASE WHEN a.attnotnull THEN ' not null' ELSE '' END || "
    " CASE WHEN a.atthasdef OR a.attidentity <> '' OR a.attgenerated <> '' OR a.attisdropped"
    " THEN ' other' ELSE '' END"
    " FROM pg_attribute a JOIN pg_class c ON c.oid = a.attrelid"
    " WHERE c.relnamespace = to_regnamespace('tavd') AND c.relkind <> 'i' AND a.attnum > 0 "
    "UNION ALL "
    "SELECT 'constraint ' || c.relname || ' ' || pg_get_constraintdef(k.oid)"
    " FROM pg_constraint k JOIN pg_class c ON c.oid = k.conrelid"
    " WHERE c.relnamespace = to_regnamespace('tavd') AND k.contype <> 'n' "
    "UNION ALL "
    "SELECT pg_get_indexdef(i.indexrelid) || CASE WHEN i.indisvalid AND i.indisready THEN '' ELSE ' other' "
    "END"
    " FROM pg_index i JOIN pg_class c ON c.oid = i.indrelid WHERE c.relnamespace = to_regnamespace('tavd')"
    ") AS declared(line) ORDER BY line COLLATE \"C\" LIMIT 20";

// What the statements above leave, and all that may stand there.
constexpr std::array<std::string_view, 14> kDeclared = {
    "CREATE UNIQUE INDEX ahm_pkey ON tavd.ahm USING btree (key)",
    "CREATE UNIQUE INDEX record_pkey ON tavd.record USING btree (key)",
    "column ahm block bytea not null",
    "column ahm key bytea not null",
    "column record body bytea not null",
    "column record key bytea not null",
    "constraint ahm CHECK ((octet_length(block) <= 67108864))",
    "constraint ahm CHECK ((octet_length(key) = 33))",
    "constraint ahm PRIMARY KEY (key)",
    "constraint record CHECK ((octet_length(body) <= 67108864))",
    "constraint record CHECK ((octet_length(key) = 33))",
    "constraint record PRIMARY KEY (key)",
    "table ahm rp",
    "table record rp",
};

void check_layout(const Server& server, const Result& comment) {
  const std::string text = comment.text(0, 0);
  if (!text.starts_with(kComment)) server.fail("not a product database: its schema tavd is somebody else's");
  const std::string layout = text.substr(kComment.size());
  if (layout == kLayout) return;
  server.fail("layout " + layout + ", this service reads layout " + std::string(kLayout));
}

}  // namespace

bool check_tables(Server& server) {
  const Result comment =
      server.run("SELECT obj_description(oid, 'pg_namespace') FROM pg_namespace WHERE nspname = 'tavd'");
  if (comment.rows() == 0) return false;
  check_layout(server, comment);
  const Result declared = server.run(kDeclarations);
  bool ours = declared.rows() == static_cast<int>(kDeclared.size());
  for (int row = 0; ours && row < declared.rows(); ++row) {
    ours = declared.text(row, 0) == kDeclared[static_cast<std::size_t>(row)];
  }
  if (!ours) server.fail(kOtherTables);
  // Everybody may see how tables are declared, but only who may read them what is in them.
  server.run("SELECT FROM tavd.record WHERE false; SELECT FROM tavd.ahm WHERE false");
  return true;
}

void make_tables(Server& server) {
  try {
    server.run(kMake);
  } catch (const Failure&) {
    if (!server.connected() || !check_tables(server)) throw;
  }
}

}  // namespace tavdsrv::postgresql
