#import <Foundation/Foundation.h>

const NSRect NSZeroRect = {{0, 0}, {0, 0}};
