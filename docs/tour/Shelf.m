#import "Shelf.h"

@implementation Shelf

+ (Shelf *)shelfWithName:(NSString *)name
{
    Shelf *shelf = [[Shelf alloc] init];
    [shelf putBook:name onLevel:0];
    return shelf;
}

- (void)putBook:(NSString *)title onLevel:(int)level
{
    [books setObject:title forKey:[NSNumber numberWithInt:level]];
}

- (NSString *)bookAtLevel:(int)level
{
    return [books objectForKey:[NSNumber numberWithInt:level]];
}

- (BOOL)lendBook:(NSString *)title toReader:(NSString *)name
{
    NSLog(@"%@ goes to %@", title, name);
    return YES;
}

@end
