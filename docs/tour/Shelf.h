// A small Objective-C class for the tour: its selectors are looked up there.
#import <Foundation/Foundation.h>

@protocol Lending
- (BOOL)lendBook:(NSString *)title toReader:(NSString *)name;
@end

@interface Shelf : NSObject <Lending>
{
    NSMutableDictionary *books;
}
+ (Shelf *)shelfWithName:(NSString *)name;
- (void)putBook:(NSString *)title onLevel:(int)level;
- (NSString *)bookAtLevel:(int)level;
@end
