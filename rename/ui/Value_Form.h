#pragma once

#include "rename/ui/Rename_Describe_Form.h"

/// The modes that give each picture a value of its own: descriptions and slide times.
class Value_Form final : public Rename_Describe_Form {
    Q_OBJECT

public:
    struct Look {
        QString caption, button, value_column;
        QString status{};
        /// Why a text cannot be taken, empty when it can.
        std::function<QString(const QString& text)> refusal{};
    };
    Value_Form(Halvine_Form& catalogue, Look look, const std::vector<int>& indices, const QStringList& values,
               QWidget* parent);

    QStringList Values();
};
