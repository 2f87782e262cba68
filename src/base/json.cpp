#include "base/json.h"

#include <boost/json/basic_parser_impl.hpp>
#include <boost/json/value_stack.hpp>
#include <charconv>
#include <string>
#include <vector>

namespace veloran {

namespace {

namespace json = boost::json;

constexpr std::size_t kMaxDepth = 32;
/// A value takes 24 bytes and more, of a text of two bytes: this keeps a hostile text of the
/// largest size from taking gigabytes. The whole catalogue has 200,000.
constexpr std::size_t kMostValues = 4'000'000;

/// Builds the value as Boost's own parser does, but for the conversion of numbers.
class ExactHandler {
  public:
    static constexpr std::size_t max_object_size = json::object::max_size();
    static constexpr std::size_t max_array_size = json::array::max_size();
    static constexpr std::size_t max_key_size = json::string::max_size();
    static constexpr std::size_t max_string_size = json::string::max_size();

    using Text = json::string_view;
    using Error = json::error_code;

    explicit ExactHandler(std::size_t mostMembers) : mostMembers_(mostMembers) { stack_.reset(); }

    bool on_document_begin(Error&) { return true; }
    bool on_document_end(Error&) { return true; }
    bool on_object_begin(Error&) {
        members_.push_back(0);
        return true;
    }
    bool on_object_end(std::size_t size, Error& error) {
        members_.pop_back();
        return stack_.push_object(size), countOne(error);
    }
    bool on_array_begin(Error&) { return true; }
    bool on_array_end(std::size_t size, Error& error) {
        return stack_.push_array(size), countOne(error);
    }
    bool on_key_part(Text part, std::size_t, Error&) { return stack_.push_chars(part), true; }
    bool on_key(Text part, std::size_t, Error& error) {
        if (++members_.back() > mostMembers_) return refuse(error);
        return stack_.push_key(part), true;
    }
    bool on_string_part(Text part, std::size_t, Error&) { return stack_.push_chars(part), true; }
    bool on_string(Text part, std::size_t, Error& error) {
        return stack_.push_string(part), countOne(error);
    }
    bool on_null(Error& error) { return stack_.push_null(), countOne(error); }
    bool on_bool(bool value, Error& error) { return stack_.push_bool(value), countOne(error); }
    bool on_comment_part(Text, Error&) { return true; }
    bool on_comment(Text, Error&) { return true; }

    bool on_number_part(Text part, Error&) {
        digits_.append(part.data(), part.size());
        return true;
    }
    bool on_int64(std::int64_t value, Text, Error& error) {
        digits_.clear();
        return stack_.push_int64(value), countOne(error);
    }
    bool on_uint64(std::uint64_t value, Text, Error& error) {
        digits_.clear();
        return stack_.push_uint64(value), countOne(error);
    }
    bool on_double(double roughly, Text rest, Error& error) {
        digits_.append(rest.data(), rest.size());
        double exact = roughly;
        // Out of range leaves `exact` alone: infinity or zero, as the parser had it.
        std::from_chars(digits_.data(), digits_.data() + digits_.size(), exact);
        digits_.clear();
        return stack_.push_double(exact), countOne(error);
    }

    json::value release() { return stack_.release(); }

  private:
    bool countOne(Error& error) { return ++count_ <= kMostValues || refuse(error); }
    static bool refuse(Error& error) {
        error = json::error::array_too_large;
        return false;
    }

    json::value_stack stack_;
    std::string digits_;
    std::size_t mostMembers_;
    std::vector<std::size_t> members_;  // so far, of each object that is open
    std::size_t count_ = 0;
};

}  // namespace

std::optional<json::value> parseJson(std::string_view text, std::size_t mostMembers) {
    json::parse_options options;
    options.max_depth = kMaxDepth;
    json::basic_parser<ExactHandler> parser(options, mostMembers);
    json::error_code error;
    const auto used = parser.write_some(false, text.data(), text.size(), error);
    if (error || used != text.size()) return std::nullopt;
    return parser.handler().release();
}

}  // namespace veloran
