#import "strings.h"

NSStr
NSO
NSLog
NSX
