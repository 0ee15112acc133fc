#pragma once

#include "evaluate/bkcEvaluate.h"

#include <ostream>
#include <string>
#include <vector>

/// A case of a file of formulas with their answers in them. Expressions stand one on a line:
///
///     1 + 1 ' expect: Long 2
///     1/0 ' expect: error 11 Division by zero @ /0
///
/// what stands behind "@" is the source from the position of the error on. Programs begin with a line of "===" and a name,
/// and what is expected of them stands in comments:
///
///     === a counter goes one beyond its limit
///     i = 0
///     For i = 1 To 3
///     Next
///     ' expect i: Long 4
///
/// "expect" without a name is the value of the formula that the program begins with. "answer: text" is what the user types
/// into the next input box.
struct Formula_Case {
    struct Expectation {
        QString name, result;
    };
    QString name, source;
    bool program = false;
    std::vector<Expectation> expected = {};
    QStringList answers = {};
};

std::ostream& operator<<(std::ostream& out, const Formula_Case& row);

std::vector<Formula_Case> Read_Formula_Cases(const char* path_in_tests);

/// "Long 2", "String abc", "Null", "Array(Long 1, Long 2)".
QString Shown(const Formula::Variant& value);
/// "error 11 Division by zero @ /0"
QString Shown(const Formula::Evaluation_Error& error, const QString& source);
