#pragma once

#include <boost/json/basic_parser_impl.hpp>
#include <boost/json/object.hpp>
#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/json.h"

namespace veloran {

/// What parseJson takes, value by value and without a tree: the same texts, limits and numbers.
///
/// `Reader` has members beginObject(), endObject(size), beginArray(), endArray(size), key(text),
/// text(text), whole(std::int64_t), whole(std::uint64_t) for what fits the first one not,
/// number(double), boolean(bool) and null(). Each returns whether to go on. Texts live for the
/// call.
template <class Reader>
class JsonEvents {
  public:
    static constexpr std::size_t max_object_size = boost::json::object::max_size();
    static constexpr std::size_t max_array_size = boost::json::array::max_size();
    static constexpr std::size_t max_key_size = boost::json::string::max_size();
    static constexpr std::size_t max_string_size = boost::json::string::max_size();

    using Text = boost::json::string_view;
    using Error = boost::json::error_code;

    JsonEvents(Reader& reader, std::size_t mostMembers)
        : reader_(reader), mostMembers_(mostMembers) {}

    bool on_document_begin(Error&) { return true; }
    bool on_document_end(Error&) { return true; }
    bool on_object_begin(Error& error) {
        members_.push_back(0);
        return reader_.beginObject() || refuse(error);
    }
    bool on_object_end(std::size_t size, Error& error) {
        members_.pop_back();
        return reader_.endObject(size) ? countOne(error) : refuse(error);
    }
    bool on_array_begin(Error& error) { return reader_.beginArray() || refuse(error); }
    bool on_array_end(std::size_t size, Error& error) {
        return reader_.endArray(size) ? countOne(error) : refuse(error);
    }
    bool on_key_part(Text part, std::size_t, Error&) { return pieces_.append(part), true; }
    bool on_key(Text part, std::size_t, Error& error) {
        if (++members_.back() > mostMembers_) return refuse(error);
        const bool goesOn = reader_.key(joined(part));
        pieces_.clear();
        return goesOn || refuse(error);
    }
    bool on_string_part(Text part, std::size_t, Error&) { return pieces_.append(part), true; }
    bool on_string(Text part, std::size_t, Error& error) {
        const bool goesOn = reader_.text(joined(part));
        pieces_.clear();
        return goesOn ? countOne(error) : refuse(error);
    }
    bool on_null(Error& error) { return reader_.null() ? countOne(error) : refuse(error); }
    bool on_bool(bool value, Error& error) {
        return reader_.boolean(value) ? countOne(error) : refuse(error);
    }
    bool on_comment_part(Text, Error&) { return true; }
    bool on_comment(Text, Error&) { return true; }

    bool on_number_part(Text part, Error&) { return pieces_.append(part), true; }
    bool on_int64(std::int64_t value, Text, Error& error) {
        pieces_.clear();
        return reader_.whole(value) ? countOne(error) : refuse(error);
    }
    bool on_uint64(std::uint64_t value, Text, Error& error) {
        pieces_.clear();
        return reader_.whole(value) ? countOne(error) : refuse(error);
    }
    bool on_double(double roughly, Text rest, Error& error) {
        const std::string_view digits = joined(rest);
        double exact = roughly;
        // Out of range leaves `exact` alone: infinity or zero, as the parser had it.
        std::from_chars(digits.data(), digits.data() + digits.size(), exact);
        pieces_.clear();
        return reader_.number(exact) ? countOne(error) : refuse(error);
    }

  private:
    /// A value takes 24 bytes and more in a tree, of a text of two bytes: this keeps a hostile text
    /// of the largest size from taking gigabytes. The whole catalogue has 200,000.
    static constexpr std::size_t kMostValues = 4'000'000;

    bool countOne(Error& error) { return ++count_ <= kMostValues || refuse(error); }
    static bool refuse(Error& error) {
        error = boost::json::error::array_too_large;
        return false;
    }
    /// The last piece with those before it; a text without escapes comes in one.
    std::string_view joined(std::string_view last) {
        if (pieces_.empty()) return last;
        return pieces_.append(last);
    }

    Reader& reader_;
    std::size_t mostMembers_;
    std::string pieces_;
    std::vector<std::size_t> members_;  // so far, of each object that is open
    std::size_t count_ = 0;
};

/// Whether `text` is sound as a whole and the reader refused none of it.
template <class Reader>
bool readJsonEvents(std::string_view text, Reader& reader, std::size_t mostMembers = kMostMembers) {
    constexpr std::size_t kMaxDepth = 32;
    boost::json::parse_options options;
    options.max_depth = kMaxDepth;
    boost::json::basic_parser<JsonEvents<Reader>> parser(options, reader, mostMembers);
    boost::json::error_code error;
    const auto used = parser.write_some(false, text.data(), text.size(), error);
    return !error && used == text.size();
}

}  // namespace veloran
