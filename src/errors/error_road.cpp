#include "errors/error_road.h"

#include <new>
#include <stdexcept>

#include "platform/errors.h"

namespace tarnwick {
namespace {
constexpr long kErrOutOfMemory = 7;
constexpr long kErrSubscriptOutOfRange = 9;

// The lowest level of the stack: number and description under headings.
std::string FirstLevel(long number, const std::string& description) {
  const std::string br(kLineBreak);
  return br + "Error Number " + br + "\t" + std::to_string(number) + br + "Description" + br + "\t" + description +
         br + br;
}
}  // namespace

RoutineError::RoutineError(long number, std::string source, std::string description)
    : RoutineError(number, std::move(source), description, false, description) {}

RoutineError::RoutineError(long number, std::string source, std::string description, bool climbing,
                           std::string reason)
    : number_(number),
      source_(std::move(source)),
      description_(std::move(description)),
      climbing_(climbing),
      reason_(std::move(reason)) {}

void RaiseError(long number, std::string source, std::string description) {
  throw RoutineError(number, std::move(source), std::move(description));
}

std::string ReturnLineText(long line) {
  return line == 0 ? std::string() : "Line : " + std::to_string(line);
}

std::string LocationText(std::string_view routine, std::string_view module, long line) {
  return std::string(routine) + " " + std::string(module) + " " + ReturnLineText(line);
}

CaughtError CurrentError(std::string_view module) {
  auto fresh = [&](long number, std::string source, std::string description) {
    std::string reason = description;
    return CaughtError{number, std::move(source), std::move(description), false, std::move(reason)};
  };
  if (!std::current_exception()) {
    return fresh(platform::kErrInvalidProcedureCall, std::string(module), "No error is being handled");
  }
  try {
    throw;
  } catch (const RoutineError& e) {
    return {e.Number(), e.Source(), e.Description(), e.Climbing(), e.Reason()};
  } catch (const platform::PlatformError& e) {
    return fresh(e.Number(), e.Source(), e.what());
  } catch (const std::bad_alloc&) {
    return fresh(kErrOutOfMemory, std::string(module), "Out of memory");
  } catch (const std::out_of_range& e) {
    return fresh(kErrSubscriptOutOfRange, std::string(module), e.what());
  } catch (const std::overflow_error& e) {
    return fresh(platform::kErrOverflow, std::string(module), e.what());
  } catch (const std::exception& e) {
    return fresh(platform::kErrInvalidProcedureCall, std::string(module), e.what());
  } catch (...) {
    return fresh(platform::kErrInvalidProcedureCall, std::string(module), "Unknown error");
  }
}

void HandleError(std::string_view routine, std::string_view module, SourceLocation where) {
  try {
    if (std::current_exception()) throw;
  } catch (const platform::RunInterrupted&) {
    throw;
  } catch (...) {
  }
  CaughtError error = CurrentError(module);
  if (!error.climbing) error.description = FirstLevel(error.number, error.description);
  throw RoutineError(error.number, std::move(error.source),
                     "\t" + LocationText(routine, module, static_cast<long>(where.line())) + std::string(kLineBreak) +
                         error.description,
                     true, std::move(error.reason));
}

}  // namespace tarnwick
