#include "catalogue/entry.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "base/json_text.h"
#include "base/text.h"
#include "catalogue/attributes.h"
#include "catalogue/values.h"
#include "tavd/tavdsrv.h"

namespace tavdhost {
namespace {

constexpr std::size_t kClassCharacters = 3;
constexpr std::size_t kIdCharacters = 30;
constexpr std::size_t kLongestAttribute = INT16_MAX;
constexpr std::size_t kLongestAhm = INT32_MAX;
constexpr std::size_t kIndent = 4;     // of a product's members
constexpr std::size_t kRowIndent = 6;  // of what stands in them

// Class and object id are texts, or {"hex": "..."} where their bytes are none.
std::optional<std::string> read_key(const ReadContext& context, const Json::Value& product, const char* name,
                                    std::size_t most) {
  const std::string what = most == kClassCharacters
                               ? "a text of exactly 3 characters"
                               : "a text of 1 to " + std::to_string(most) + " characters";
  if (!product.isMember(name)) {
    context.fault(product, name, "missing; expected " + what);
    return std::nullopt;
  }
  const Json::Value& value = product[name];
  std::optional<std::string> bytes;
  if (value.isObject() && value.size() == 1 && value.isMember("hex")) {
    bytes = encode_hex(context, value["hex"], std::string(name) + ".hex", most);
    if (!bytes) return std::nullopt;
  } else if (value.isString()) {
    const std::string text = value.asString();
    bytes = context.codec.encode(0, text);
    if (most == kIdCharacters && text.ends_with(' ')) {
      context.remark(value, name, "expected no blanks at the end, found " + in_quotes(text));
    }
  }
  if (bytes && most == kIdCharacters) bytes->resize(bytes->find_last_not_of(' ') + 1);
  const bool fits = bytes && bytes->size() <= most && !bytes->empty() && bytes->find('\0') == bytes->npos &&
                    (most != kClassCharacters || bytes->size() == most);
  if (!fits) {
    context.expected(value, name, what);
    return std::nullopt;
  }
  return bytes;
}

// The attribute number that a member's name is, written as the dump writes it.
std::optional<std::int16_t> number_of(const std::string& name) {
  std::int16_t number = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
  if (error != std::errc() || end != name.data() + name.size() || std::to_string(number) != name) {
    return std::nullopt;
  }
  return number;
}

class EntryReader {
 public:
  EntryReader(const ReadContext& context, Entry& entry) : context_(context), entry_(entry) {}

  void member(const std::string& name, const Json::Value& value) {
    if (const Attribute* attribute = find_attribute(std::string_view(name))) {
      put(attribute->number, encode_value(context_, *attribute, attribute->number, value, name), value, name);
    } else if (const TextGroup* group = find_text_group(name)) {
      texts(*group, value);
    } else if (const auto number = number_of(name)) {
      put(*number, encode_hex(context_, value, name, kLongestAttribute), value, name);
    } else if (name == "ahm") {
      entry_.ahm = encode_hex(context_, value, name, kLongestAhm);
    } else {
      context_.fault(value, name,
                     "unknown field" + did_you_mean(name, member_names()) +
                         "; expected the name of an attribute, or its number with the value in hex");
    }
  }

 private:
  void texts(const TextGroup& group, const Json::Value& value) {
    if (!value.isObject()) {
      context_.expected(value, group.name, std::string("an object, its members named by ") + group.keys);
      return;
    }
    std::size_t known = 0;
    for (const GroupText& text : group.texts) {
      if (!value.isMember(text.key)) continue;
      ++known;
      const Json::Value& member = value[text.key];
      const std::string field = std::string(group.name) + '.' + text.key;
      put(text.number, encode_value(context_, group_text_layout(), text.number, member, field), member,
          field);
    }
    if (known < value.size()) unknown_keys(group, value);
  }

  void unknown_keys(const TextGroup& group, const Json::Value& value) {
    std::vector<std::string_view> keys;
    std::string listed;
    for (const GroupText& text : group.texts) {
      keys.emplace_back(text.key);
      listed += (listed.empty() ? "" : ", ") + std::string(text.key);
    }
    for (const std::string& key : value.getMemberNames()) {
      if (std::ranges::find(keys, key) != keys.end()) continue;
      context_.fault(value[key], std::string(group.name) + '.' + key,
                     "unknown" + did_you_mean(key, keys) + "; expected " + group.keys + ": " + listed);
    }
  }

  void put(std::int16_t number, const std::optional<std::string>& bytes, const Json::Value& at,
           const std::string& field) {
    if (!bytes) return;
    if (!entry_.attributes.emplace(number, *bytes).second) {
      context_.fault(at, field, "attribute " + std::to_string(number) + " stands twice in this product");
    }
  }

  const ReadContext& context_;
  Entry& entry_;
};

// The texts of one group that the product has and that can be read; their numbers go into `written`.
std::string group_member(TextCodec& codec, const Entry& entry, const TextGroup& group,
                         std::map<std::int16_t, bool>& written) {
  std::string members;
  for (const GroupText& text : group.texts) {
    const auto found = entry.attributes.find(text.number);
    if (found == entry.attributes.end()) continue;
    const auto value = decode_value(codec, group_text_layout(), text.number, found->second, kRowIndent);
    if (!value) continue;
    if (!members.empty()) members += ',';
    members += '\n' + std::string(kRowIndent, ' ') + json_quoted(text.key) + ": " + *value;
    written[text.number] = true;
  }
  return members.empty() ? members : '{' + members + '\n' + std::string(kIndent, ' ') + '}';
}

std::string key_text(TextCodec& codec, const std::string& bytes) {
  const auto text = codec.decode(0, bytes);
  if (text && codec.encode(0, *text) == bytes) return json_quoted(*text);
  return "{\"hex\": \"" + to_hex(bytes) + "\"}";
}

}  // namespace

std::optional<Entry> read_entry(const TextCodec& codec, const Source& source, const Json::Value& value,
                                Faults& faults, Faults* remarks) {
  ReadContext context{codec, source, faults, remarks, {}};
  if (!value.isObject()) {
    context.expected(value, "", "an object for each product");
    return std::nullopt;
  }
  // Named as it stands until it is known to be good.
  if (value["id"].isString()) context.product = printable(value["id"].asString());
  if (value["class"].isString())
    context.product = printable(value["class"].asString()) + ' ' + context.product;
  const auto class_id = read_key(context, value, "class", kClassCharacters);
  const auto object_id = read_key(context, value, "id", kIdCharacters);

  Entry entry;
  entry.place = source.place(value.getOffsetStart());
  EntryReader reader(context, entry);
  for (const std::string& name : value.getMemberNames()) {
    if (name != "class" && name != "id") reader.member(name, value[name]);
  }
  if (!class_id || !object_id) return std::nullopt;
  entry.class_id = *class_id;
  entry.object_id = *object_id;
  return entry;
}

Entry stored_entry(const Database& database, const Record& record) {
  char class_id[8] = {};
  char object_id[32] = {};
  tavbgetID(database.handle(), record.get(), class_id, object_id);
  Entry entry;
  entry.class_id.assign(class_id, kClassCharacters);
  entry.object_id.assign(object_id, kIdCharacters);
  entry.object_id.resize(entry.object_id.find_last_not_of(' ') + 1);
  const std::int32_t count = tavdsrv_attributecount(record.get());
  for (std::int32_t i = 0; i < count; ++i) {
    std::int16_t number = 0;
    const void* data = nullptr;
    std::int32_t length = 0;
    tavdsrv_attributeat(record.get(), i, &number, &data, &length);
    entry.attributes[number].assign(static_cast<const char*>(data), static_cast<std::size_t>(length));
  }
  std::int32_t length = 0;
  void* block = tavbgetahm(database.handle(), record.get(), &length);
  check_service();
  if (block != nullptr) entry.ahm.emplace(static_cast<const char*>(block), static_cast<std::size_t>(length));
  tavbreleaseahm(block);
  return entry;
}

std::string entry_text(TextCodec& codec, const Entry& entry) {
  std::string text = "  {";
  const auto member = [&](std::string_view name, const std::string& value) {
    if (!text.ends_with('{')) text += ',';
    text += '\n' + std::string(kIndent, ' ') + json_quoted(name) + ": " + value;
  };
  member("class", key_text(codec, entry.class_id));
  member("id", key_text(codec, entry.object_id));
  std::map<std::int16_t, bool> written;
  for (const TextGroup& group : text_groups()) {
    const std::string members = group_member(codec, entry, group, written);
    if (!members.empty()) member(group.name, members);
  }
  for (const auto& [number, bytes] : entry.attributes) {
    if (written.contains(number)) continue;
    const Attribute* attribute = find_attribute(number);
    const auto value = attribute ? decode_value(codec, *attribute, number, bytes, kRowIndent) : std::nullopt;
    if (value) {
      member(attribute->name, *value);
    } else {
      member(std::to_string(number), '"' + to_hex(bytes) + '"');
    }
  }
  if (entry.ahm) member("ahm", '"' + to_hex(*entry.ahm) + '"');
  return text + "\n  }";
}

}  // namespace tavdhost
