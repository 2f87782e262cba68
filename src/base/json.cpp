#include "base/json.h"

#include <boost/json/value_stack.hpp>

#include "base/json_events.h"

namespace veloran {

namespace {

class TreeBuilder {
  public:
    TreeBuilder() { stack_.reset(); }

    bool beginObject() { return true; }
    bool endObject(std::size_t size) { return stack_.push_object(size), true; }
    bool beginArray() { return true; }
    bool endArray(std::size_t size) { return stack_.push_array(size), true; }
    bool key(std::string_view key) { return stack_.push_key(key), true; }
    bool text(std::string_view text) { return stack_.push_string(text), true; }
    bool whole(std::int64_t value) { return stack_.push_int64(value), true; }
    bool whole(std::uint64_t value) { return stack_.push_uint64(value), true; }
    bool number(double value) { return stack_.push_double(value), true; }
    bool boolean(bool value) { return stack_.push_bool(value), true; }
    bool null() { return stack_.push_null(), true; }

    boost::json::value release() { return stack_.release(); }

  private:
    boost::json::value_stack stack_;
};

}  // namespace

std::optional<boost::json::value> parseJson(std::string_view text, std::size_t mostMembers) {
    TreeBuilder tree;
    if (!readJsonEvents(text, tree, mostMembers)) return std::nullopt;
    return tree.release();
}

}  // namespace veloran
