/// @file
/// What a scene builder keeps of the calls that it is given, and how it puts paths together from it
/// and takes them apart.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

namespace Fuzz {

using Values = std::vector<std::uint64_t>;

struct ModelEntity {
    std::uint64_t owner = 0;
    std::int64_t type = -1;
    std::uint64_t number = 0;

    bool IsEmpty() const { return owner == 0 && number == 0; }
};

/// The numbers that are types.
inline const std::set<std::uint64_t>& entityTypes() {
    static const std::set<std::uint64_t> types = {
        10000, 10001, 10002, 10003, 10004, 10005, 10006, 10007, 10008, 10009, 10010, 10012,
        10100, 10101, 10102, 10103, 10104, 10105, 11000, 20000, 40000, 50000, 99999};
    return types;
}

inline std::int64_t typeOfNumber(std::uint64_t number) {
    return entityTypes().count(number) == 0 ? -1 : static_cast<std::int64_t>(number);
}

struct ModelBuilder {
    Values scenes;
    Values containers;
    bool hasContent = false;

    Values ContainerPath() const {
        Values path = scenes;
        if (!containers.empty()) {
            path.push_back(containers.back());
        }
        return path;
    }

    Values Compose(const ModelEntity& entity) const {
        Values path = ContainerPath();
        appendEntity(path, entity);
        return path;
    }
    Values Compose(std::int64_t type, const ModelEntity& entity) const {
        Values path = ContainerPath();
        path.push_back(static_cast<std::uint64_t>(type));
        appendEntity(path, entity);
        return path;
    }

    ModelEntity Extract(const Values& path) const {
        const std::size_t head = ContainerPath().size();
        ModelEntity entity;
        if (path.size() == 3) {
            entity.number = path[2];
        } else if (!path.empty() && path.size() >= head + 2) {
            entity.owner = path[head];
            entity.type = typeOfNumber(path[head + 1]);
            if (entity.type != -1 && path.size() >= head + 5) {
                entity.number = path[head + 2];
            }
        }
        return entity;
    }

private:
    static void appendEntity(Values& path, const ModelEntity& entity) {
        if (entity.type == -1) {
            return;
        }
        if (entity.type != 10003) {
            path.push_back(entity.owner);
            path.push_back(static_cast<std::uint64_t>(entity.type));
        }
        path.push_back(entity.number);
    }
};

}  // namespace Fuzz
