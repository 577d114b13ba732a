#pragma once

#import <Foundation/Foundation.h>

/// Collects what is autoreleased while it is there.
class Pool {
 public:
  Pool() : pool_([[NSAutoreleasePool alloc] init]) {}
  ~Pool() { [pool_ drain]; }
  Pool(const Pool&) = delete;
  Pool& operator=(const Pool&) = delete;

  NSAutoreleasePool* get() const { return pool_; }

 private:
  NSAutoreleasePool* pool_;
};
