#pragma once

#include <QSize>
#include <QTest>

#include <array>
#include <initializer_list>
#include <tuple>

namespace quillmere {

/**
 * The table of a test that runs once for each row, for the test's _data function. Each row begins with its name:
 * `rows<Qt::Key, double>({"key", "target"}, {{"left", Qt::Key_Left, -10}, {"right", Qt::Key_Right, 10}});`
 */
template<typename... Values>
void rows(const std::array<const char*, sizeof...(Values)>& columns,
          std::initializer_list<std::tuple<const char*, Values...>> table)
{
    std::size_t column = 0;
    (QTest::addColumn<Values>(columns[column++]), ...);
    for (const auto& row : table)
        std::apply([](const char* name, const auto&... values) { (QTest::newRow(name) << ... << values); }, row);
}

/** The table of a test that runs once for each size of display; its column is "size". */
inline void rowsOfDisplaySizes()
{
    rows<QSize>({"size"}, {{"720p", {1280, 720}}, {"1080p", {1920, 1080}}, {"2160p", {3840, 2160}}});
}

} // namespace quillmere
