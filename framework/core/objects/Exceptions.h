// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <exception>

#include "framework/core/text/String.h"

namespace framework {

/// Base of all exceptions of the framework and of the program. Raised by value, caught by class.
class RuntimeException : public std::exception {
  public:
    RuntimeException() = default;
    explicit RuntimeException(String message, int errorNumber = 0);

    /// A sentence for a person, or empty.
    const String& Message() const { return message_; }
    /// A number that the raiser chose, often one of the operating system; 0 when there is none.
    int ErrorNumber() const { return errorNumber_; }

    /// What a person is told where nothing catches this, for a failure that is no fault of the program; empty for a
    /// fault.
    const String& Explanation() const { return explanation_; }
    void Explanation(String explanation);

    /// The class's name, for the alert on an exception that nothing caught.
    virtual String ClassName() const { return "RuntimeException"; }

    const char* what() const noexcept override;

  private:
    String message_;
    String explanation_;
    int errorNumber_ = 0;
};

/// An operation was applied to Nil.
class NilObjectException : public RuntimeException {
  public:
    using RuntimeException::RuntimeException;
    String ClassName() const override { return "NilObjectException"; }
};

/// An array or list index is outside its bounds.
class OutOfBoundsException : public RuntimeException {
  public:
    using RuntimeException::RuntimeException;
    String ClassName() const override { return "OutOfBoundsException"; }
};

/// A Dictionary was asked for the value of a key that it does not hold.
class KeyNotFoundException : public RuntimeException {
  public:
    using RuntimeException::RuntimeException;
    String ClassName() const override { return "KeyNotFoundException"; }
};

/// A function that is looked up by name at run time is missing from its library.
class FunctionNotFoundException : public RuntimeException {
  public:
    using RuntimeException::RuntimeException;
    String ClassName() const override { return "FunctionNotFoundException"; }
};

/// A Shell that is not running was asked for something that only a running one can do.
class ShellNotRunningException : public RuntimeException {
  public:
    using RuntimeException::RuntimeException;
    String ClassName() const override { return "ShellNotRunningException"; }
};

/// No process could be started for a Shell.
class ShellNotAvailableException : public RuntimeException {
  public:
    using RuntimeException::RuntimeException;
    String ClassName() const override { return "ShellNotAvailableException"; }
};

/// The calls of a thread are nested so deeply that its stack is nearly used up.
class StackOverflowException : public RuntimeException {
  public:
    using RuntimeException::RuntimeException;
    String ClassName() const override { return "StackOverflowException"; }
};

/// A Variant was asked for a kind of value that it does not hold and cannot be turned into.
class TypeMismatchException : public RuntimeException {
  public:
    using RuntimeException::RuntimeException;
    String ClassName() const override { return "TypeMismatchException"; }
};

}  // namespace framework
