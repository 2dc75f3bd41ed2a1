#pragma once

#include <atomic>
#include <functional>
#include <initializer_list>
#include <string>
#include <utility>

#include "features/AdapterFeature.h"
#include "features/FeatureContainer.h"

namespace orvo::cognex {

// The kinds that need no board: three keep a value in memory, two call functions of their creator.

/// A flag, "True" or "False". Every text but "True" writes false, and none is refused.
class BooleanFeature : public AdapterFeature {
public:
    BooleanFeature() : AdapterFeature(FeatureType::Boolean) {}

    bool value() const { return m_value; }
    void setValue(bool value) { m_value = value; }

protected:
    void doRead(char* val) override;
    void doWrite(const char* val) override;
    void doExecute() override;

private:
    bool m_value = false;
};

/// A whole number. Any thread may call value() and setValue(): the frame counter needs that.
template <typename T>
class NumberFeature : public AdapterFeature {
public:
    NumberFeature() : AdapterFeature(FeatureType::Integer) {}

    T value() const { return m_value.load(std::memory_order_relaxed); }
    /// Calls no observer.
    void setValue(T value) { m_value.store(value, std::memory_order_relaxed); }

protected:
    void doRead(char* val) override;
    /// Throws AIKException and keeps the value if the text doesn't begin with a number that fits.
    void doWrite(const char* val) override;
    void doExecute() override;

private:
    std::atomic<T> m_value{};
};

extern template class NumberFeature<int>;
extern template class NumberFeature<unsigned int>;
extern template class NumberFeature<unsigned long long>;

/// A text of any length; a read gives its first 255 characters.
class StringFeature : public AdapterFeature {
public:
    StringFeature() : AdapterFeature(FeatureType::String) {}

    std::string value() const { return m_value; }
    /// Calls no observer.
    void setValue(std::string value) { m_value = std::move(value); }

protected:
    void doRead(char* val) override;
    void doWrite(const char* val) override;
    void doExecute() override;

private:
    std::string m_value;
};

/// Calls a function when it is executed. Its own failures are runtime_errors, so the container adds nothing
/// to their texts.
class CommandFeature : public AdapterFeature {
public:
    using Function = std::function<void()>;

    CommandFeature();

    void setFunction(Function function) { m_function = std::move(function); }

protected:
    void doRead(char* val) override;
    void doWrite(const char* val) override;
    void doExecute() override;

private:
    Function m_function;
};

/// Keeps no value: passes reads, writes and execution to functions of its creator, who sets the type too. A
/// read function may write up to kHostTextSize bytes.
class ProxyFeature : public AdapterFeature {
public:
    using ReadFunction = std::function<void(char*)>;
    using WriteFunction = std::function<void(const char*)>;
    using ExecuteFunction = std::function<void()>;

    ProxyFeature();

    void setReadFunction(ReadFunction function) { m_readFunction = std::move(function); }
    void setWriteFunction(WriteFunction function) { m_writeFunction = std::move(function); }
    void setExecuteFunction(ExecuteFunction function) { m_executeFunction = std::move(function); }

protected:
    void doRead(char* val) override { m_readFunction(val); }
    void doWrite(const char* val) override { m_writeFunction(val); }
    void doExecute() override { m_executeFunction(); }

private:
    ReadFunction m_readFunction;
    WriteFunction m_writeFunction;
    ExecuteFunction m_executeFunction;
};

/// A ProxyFeature that is read and written by its owner.
template <typename Owner>
struct ProxyValue {
    const char* name;
    const char* description;
    FeatureType type;
    void (Owner::*read)(char* val);
    void (Owner::*write)(const char* val);
};

/// Adds a feature for each row. `owner` must live as long as they can be used.
template <typename Owner>
void addProxyValues(FeatureContainer& container, const Access& access, Owner& owner,
                    std::initializer_list<ProxyValue<Owner>> rows)
{
    for (const auto& row : rows) {
        const auto value = addFeature<ProxyFeature>(container, row.name, row.description, access);
        value->setType(row.type);
        value->setReadFunction([&owner, read = row.read](char* val) { (owner.*read)(val); });
        value->setWriteFunction([&owner, write = row.write](const char* val) { (owner.*write)(val); });
    }
}

/// Adds a command that its owner executes. `owner` must live as long as it can be used.
template <typename Owner>
void addProxyCommand(FeatureContainer& container, const char* name, const char* description,
                     const Access& access, Owner& owner, void (Owner::*execute)())
{
    const auto command = addFeature<ProxyFeature>(container, name, description, access);
    command->setType(FeatureType::Command);
    command->setExecuteFunction([&owner, execute] { (owner.*execute)(); });
}

}   // namespace orvo::cognex
