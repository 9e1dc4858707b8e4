#pragma once

/// @file
/// An exchange file as text, to which entities can be added that its writer does not know.

#include <map>
#include <string>
#include <vector>

namespace kesview {

class ExchangeText {
public:
    /// @p text as a writer wrote it, one entity after the other, each on lines of its own.
    explicit ExchangeText(std::string text);

    /// The first entity that starts with @p start, as "DATUM('',": its number. Throws
    /// std::runtime_error where there is none.
    int Find(const std::string& start) const;

    /// All of them, by rising number.
    std::vector<int> FindAll(const std::string& start) const;

    /// An entity without its number, on one line, "DIRECTION('',(0.,0.,1.))".
    const std::string& Entity(int id) const { return _entities.at(id); }

    /// Number of the entity that is the @p place-th that @p id refers to; 0 is the first, -1 the
    /// last.
    int Reference(int id, int place) const;

    /// Adds an entity and gives its number.
    int Add(const std::string& entity);

    void Remove(int id) { _entities.erase(id); }

    void Replace(const std::string& old, const std::string& by);  ///< wherever it stands

    std::string Text() const;

private:
    std::string _head;
    std::map<int, std::string> _entities;
};

/// "#12"
std::string reference(int id);

/// A number as exchange files want it, with a point.
std::string real(double number);

}  // namespace kesview
