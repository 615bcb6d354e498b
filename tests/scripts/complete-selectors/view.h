@interface View
- (id)initWithFrame:(int)frame style:(int)style;
- (id)initWithFrame:(int)frame style:(int)style tint:(int)tint;
- (id)initWithName:(id)name;
- (void)drawLine;
- (void)setTitle:(id)title;
- (void)setTitle:(id)title forState:(int)state;
@end
@interface List
- (void)addItem:(id)item at:(int)index;
- (void)addItem:(id)item at:(int)index with:(id)style;
- (void)pushItem:(id)item on:(id)stack;
@end
