typedef unsigned long NSStringEncoding;
@class NSString;
void NSLog(NSString *format);
int NSOrderedSame;
