// A step of a job together with what became of it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "job/job.hpp"
#include "job/run.hpp"

namespace kavo_app {

/// Looks up a step's inputs and outputs by field name, for what is drawn and listed of them.
class StepView {
 public:
  /// @param job, outcomes  a job and its run; both must outlive the view.
  StepView(const Job& job, const std::vector<Outcome>& outcomes, std::size_t index)
      : job_(job), outcomes_(outcomes), index_(index) {}

  const Step& GetStep() const { return job_.steps[index_]; }
  std::size_t Index() const { return index_; }
  const InstrumentSettings& Settings() const { return job_.settings; }
  const Outcome& Result() const { return outcomes_[index_]; }

  /// What the call got; null when the service has no such input, or the step did not run.
  const Value* In(std::string_view name) const;
  /// What the call gave; null when the service has no such output.
  const Value* Out(std::string_view name) const;
  /// The input or else the output of that name, as that type; null when there is none.
  template <class T>
  const T* Find(std::string_view name) const {
    for (const auto* value : {In(name), Out(name)}) {
      if (const auto* found = std::get_if<T>(value)) {
        return found;
      }
    }
    return nullptr;
  }
  /// The step that set the base which an input names.
  StepView BaseOf(std::string_view name) const;
  /// The step whose result an input is.
  StepView SourceOf(std::size_t input) const {
    return {job_, outcomes_, GetStep().inputs[input].from->step};
  }
  /// Nothing, or what keeps the step from being good, to end a label with.
  std::string Flaw() const { return Result().Good() ? "" : ", " + std::string(Result().Flaw()); }
  /// The name of an output point: the step's, with the field's where there are several points.
  std::string PointName(std::size_t output) const;

 private:
  const Job& job_;
  const std::vector<Outcome>& outcomes_;
  std::size_t index_;
};

}  // namespace kavo_app
