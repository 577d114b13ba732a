// A method of the system's that a test answers itself, for as long as the object is there.
#pragma once

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

class Replaced {
 public:
  template <class Answer>
  Replaced(Method method, Answer* answer)
      : method_(method), before_(method_setImplementation(method, reinterpret_cast<IMP>(answer))) {}
  ~Replaced() { method_setImplementation(method_, before_); }
  Replaced(const Replaced&) = delete;
  Replaced& operator=(const Replaced&) = delete;

 private:
  Method method_;
  IMP before_;
};
