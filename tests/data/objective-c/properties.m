#define AVAILABLE(a, b) __attribute__((deprecated))
#define DEPRECATED __attribute__((deprecated))
#define IBOutlet
#define LIST(type, of) type *
@protocol P
@property int ofAProtocol;
@property (class) int ofTheClassOfAProtocol;
@end
typedef unsigned char BOOL;
@interface Root @end
@interface List<T> : Root { T some; }
@end
@interface Properties
@property int plain;
@property(nonatomic)int close;
@property (nonatomic, getter=isRenamed, setter=setIt:) BOOL renamed;
@property (copy) void (^block)(int a, void (^b)(char c));
@property (copy) int (^(^blockOfBlock)(int a))(char b);
@property void (*function)(int a, char *b);
@property int first, *second, (*third)(int);
@property (retain) id <P> qualified;
@property (retain) List<id <P>> *list;
@property (retain) List<List<id> *> *lists;
@property struct S { int x; } structure;
@property struct { int x, y; } unnamed;
@property IBOutlet id outlet;
@property (retain) IBOutlet List *another;
@property (readonly) BOOL URL;
@property (readonly) List *availableList AVAILABLE(1, 2);
@property (readonly) List *deprecatedList DEPRECATED;
@property (readonly) int deprecatedNumber DEPRECATED, andNot;
@property (class, readonly) int shared;
@property
    (readonly)
    List
    *onAnotherLine
    ;
@property (nullable, copy) List * const _constant;
@property (retain) LIST(List, id) made;
@end
@interface Properties (More)
@property int ofACategory;
@end
@interface Properties ()
@property (readwrite) int shared2;
@end
@implementation Properties
@synthesize plain, close = close_, renamed = _renamed;
@dynamic block
    , blockOfBlock;
- (int) plain { return plain; }
@end
