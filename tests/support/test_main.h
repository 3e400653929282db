#pragma once

#include <QObject>

#include <functional>
#include <memory>

// Tests are full of texts.
using namespace Qt::StringLiterals;

namespace test {

/// The modal screens that a test works on at present. Another one that stays up is nobody's: the runner fails the test
/// with its words and closes it.
inline QObjectList driven;

/// Adds a test class to those that the executable runs.
bool Register(const char *name, std::function<std::unique_ptr<QObject>()> make);

} // namespace test

/// Written once below a test class: `REGISTER_TEST(TestDateEdit)`.
/// `tests_host TestDateEdit rule` runs one function of one class; without arguments everything runs.
#define REGISTER_TEST(Class)                                                                                           \
    static const bool Registered##Class =                                                                              \
        test::Register(#Class, []() -> std::unique_ptr<QObject> { return std::make_unique<Class>(); });
