#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QTranslator>

#include <map>
#include <string>
#include <utility>

namespace vexil::test {

/// Texts for keys of one context, while it lives.
class KeyTranslator : public QTranslator {
public:
    KeyTranslator(std::string context, std::map<std::string, QString> texts)
        : context_(std::move(context)), texts_(std::move(texts)) {
        QCoreApplication::installTranslator(this);
    }
    KeyTranslator(const KeyTranslator&) = delete;
    KeyTranslator& operator=(const KeyTranslator&) = delete;
    ~KeyTranslator() override { QCoreApplication::removeTranslator(this); }

    QString translate(const char* context, const char* key, const char*, int) const override {
        const auto text = texts_.find(key);
        return context == context_ && text != texts_.end() ? text->second : QString();
    }
    bool isEmpty() const override { return false; }

private:
    std::string context_;
    std::map<std::string, QString> texts_;
};

} // namespace vexil::test
